#pragma once

#include <chrono>
#include <cstdint>
#include <string_view>

#include "base/colour.h"

namespace orvalis {

/// Older readings are stale: the panel shows them grey, the verdict is withdrawn, averages restart and curves have a
/// gap.
inline constexpr std::chrono::seconds kFreshFor{10};

/// A condition as the panel shows it.
struct Word {
  std::string_view text;  ///< one of the fixed words, or empty before the first frame
  Colour colour = Colour::kWhite;
};

/// The results of the last working cycle, for everything that shows, logs, uploads or serves them. A cycle without a
/// frame changes nothing. Temperatures are in degrees Celsius, wind in miles per hour.
struct WeatherState {
  /// The averages before the first block is complete.
  static constexpr double kNoAverage = -99.0;
  /// The sky temperature before the first frame.
  static constexpr double kNoSky = 999.0;
  /// The unsafe indicator without a frame.
  static constexpr std::int32_t kNoVerdict = -1;

  double body_celsius = kNoAverage;     ///< thermopile body, block average
  double ambient_celsius = kNoAverage;  ///< block average
  double rain_average = 0;              ///< counts, block average
  bool ambient_known = false;           ///< whether the averages come only from current readings
  bool body_known = false;
  bool first_pass = true;  ///< no block completed since the start: the averages may be `kNoAverage`

  double humidity_percent = 0;  ///< relative humidity as computed, not clamped
  double dew_point_celsius = 0;
  double sky_celsius = kNoSky;    ///< measured sky temperature
  double clear_sky_celsius = 0;   ///< calculated for a clear sky
  double difference_celsius = 0;  ///< ambient as shown minus measured sky
  bool humidity_faulty = false;   ///< the unit marks its humidity sensor as faulty
  bool sky_faulty = false;

  Word cloud;             ///< "Clear", "PCloudy", "Cloudy"
  float clouds = 1;       ///< clouds figure: 0, 0.5 or 1.0; in doubt, overcast until the first frame
  std::int32_t rain = 0;  ///< counts, this frame
  bool raining = false;   ///< the count is above the threshold
  Word rain_word;         ///< "Dry", "Damp", "Rain"
  double light = 0;       ///< counts, this frame; high means dark
  Word light_word;        ///< "Dark", "Dusk", "Day"
  double wind_mph = 0;
  double wind_average_mph = 0;
  double wind_gust_mph = 0;
  Word wind_word;  ///< "Calm", "Breeze", "Windy"
  Word heater;     ///< "Y", "?", "N"
  Word relay;      ///< "Y", "?", "N"

  /// The relay digit of the frame; safe exactly when it is 0. -1, in doubt unsafe, until the first frame, when the
  /// frame has no digit there, and when the last frame is older than `kFreshFor`.
  std::int32_t unsafe_indicator = kNoVerdict;

  bool from_demo = false;  ///< the last frame was a demonstration line

  /// Marks the averages as stale. Their values stay until the next reading.
  void ForgetAverages() { body_known = ambient_known = first_pass = false; }
};

}  // namespace orvalis
