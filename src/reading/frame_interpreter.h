#pragma once

#include "config/settings.h"
#include "reading/conversions.h"
#include "reading/sensor_frame.h"
#include "reading/weather_state.h"
#include "reading/wind.h"

namespace orvalis {

/// Turns a frame into physical values, words and the verdict. Does not allocate.
class FrameInterpreter {
 public:
  /// The verdict and the unit's switches. Never throws, so that later errors cannot delay the verdict.
  static void ReadSwitches(const SensorFrame& frame, WeatherState& state);

  /// Rain, light and the wind figures. Never throws either.
  void ReadRainLightAndWind(const SensorFrame& frame, const Settings& settings, WeatherState& state);

  /// Everything else: the temperatures and the values derived from them. Returns whether a block of averages was
  /// completed. Throws RunTimeError for readings that cannot be converted; `state` may then be partly updated.
  bool Interpret(const SensorFrame& frame, const Settings& settings, double humidity_selector, WeatherState& state);

  /// Starts a new time span for the gust.
  void BeginGustBlock() { wind_.BeginGustBlock(); }
  [[nodiscard]] std::int32_t samples_taken() const { return averages_.samples_taken(); }

 private:
  BlockAverages averages_;
  WindFigures wind_;
};

}  // namespace orvalis
