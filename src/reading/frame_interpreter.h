#pragma once

#include "config/settings.h"
#include "reading/conversions.h"
#include "reading/sensor_frame.h"
#include "reading/weather_state.h"
#include "reading/wind.h"

namespace orvalis {

/// From one frame to physical values, words and the verdict. Allocates nothing.
class FrameInterpreter {
 public:
  /// The verdict and what the unit has switched on. Never throws: nothing that goes wrong later may keep it back.
  static void ReadSwitches(const SensorFrame& frame, WeatherState& state);

  /// What each frame says by itself, and the wind's figures. Never throws either.
  void ReadRainLightAndWind(const SensorFrame& frame, const Settings& settings, WeatherState& state);

  /// Everything else: the temperatures and what follows from them. Returns whether a block of averages was completed.
  /// Throws RunTimeError for readings that have no conversion; `state` may be partly new then.
  bool Interpret(const SensorFrame& frame, const Settings& settings, double humidity_selector, WeatherState& state);

  /// The gust's time span is over.
  void BeginGustBlock() { wind_.BeginGustBlock(); }
  [[nodiscard]] std::int32_t samples_taken() const { return averages_.samples_taken(); }

 private:
  BlockAverages averages_;
  WindFigures wind_;
};

}  // namespace orvalis
