#pragma once

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>

#include "base/message.h"
#include "reading/sensor_frame.h"
#include "reading/weather_state.h"

namespace orvalis {

/// Block averages of the body and ambient temperatures and the rain count: they change once every N frames.
class BlockAverages {
 public:
  static constexpr std::int32_t kMaxSamples = 300;
  /// After this many frames (one every two seconds) without a reading the average counts as unknown but keeps its
  /// value.
  static constexpr std::int32_t kMissingUntilUnknown = kFreshFor / std::chrono::seconds{2};

  /// Whether `block_size` is valid.
  [[nodiscard]] static constexpr bool Allows(std::int32_t block_size) {
    return block_size >= 1 && block_size <= kMaxSamples;
  }

  /// Takes one sample of each from `frame`; when that completes a block of `block_size`, stores the three averages in
  /// `state`. A missing temperature repeats the current average. A changed `block_size` starts a new block. Returns
  /// whether a block was completed.
  ///
  /// A temperature that is unknown, after a gap or a sensor fault, does not wait for the end of a block: its first
  /// reading becomes the average at once. At the beginning of a block it counts as a block of its own. With an invalid
  /// `block_size` no temperature is known.
  bool Add(const SensorFrame& frame, std::int32_t block_size, WeatherState& state);

  /// The number of samples in the current block, 0 right after one was completed.
  [[nodiscard]] std::int32_t samples_taken() const { return index_ - 1; }

 private:
  struct Samples {
    SensorFrame::Field field;
    double WeatherState::*average;
    bool WeatherState::*known;
    std::array<double, kMaxSamples> values{};
    bool all_read = true;  ///< no sample repeats the value from before the first reading
    std::int32_t missing_in_a_row = 0;
  };

  /// Takes one sample of a temperature. Returns whether it became the average at once.
  static bool Take(const SensorFrame& frame, std::size_t slot, Samples& samples, WeatherState& state);

  std::int32_t index_ = 1;  ///< counted from 1
  std::int32_t block_size_ = 0;
  Samples body_{SensorFrame::Field::kTtp, &WeatherState::body_celsius, &WeatherState::body_known};
  Samples ambient_{SensorFrame::Field::kTa, &WeatherState::ambient_celsius, &WeatherState::ambient_known};
  std::array<double, kMaxSamples> rain_{};
};

/// Why `count` is invalid as the setting "TempsAvgCount", for a person, or "".
[[nodiscard]] Message AveragingCountComplaint(std::int32_t count);

[[nodiscard]] constexpr double ToFahrenheit(double celsius) { return celsius * 1.8 + 32; }

/// Relative humidity in percent, not clamped, from the sensor count (0 to 1023) at `ambient_celsius`. `selector` below
/// 2.0 chooses the other temperature curve. Throws RunTimeError kDivisionByZero at a zero of the curve, far outside the
/// sensor's range.
[[nodiscard]] double RelativeHumidity(double count, double ambient_celsius, double selector);

/// Dew point in degrees Celsius, Magnus form. Below 0 and above 99 percent it is the ambient temperature.
/// Throws RunTimeError kInvalidCall for 0 percent exactly and kDivisionByZero at -243.12 °C.
[[nodiscard]] double DewPoint(double humidity_percent, double ambient_celsius);

/// The temperature of a clear sky, in degrees Celsius. Throws RunTimeError kInvalidCall for dew points so low that the
/// emissivity would be negative.
[[nodiscard]] double ClearSkyTemperature(double dew_point_celsius, double ambient_celsius);

}  // namespace orvalis
