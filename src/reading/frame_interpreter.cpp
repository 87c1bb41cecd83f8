#include "reading/frame_interpreter.h"

#include "base/text.h"
#include "reading/conditions.h"

namespace orvalis {

using Field = SensorFrame::Field;

void FrameInterpreter::ReadSwitches(const SensorFrame& frame, WeatherState& state) {
  state.unsafe_indicator = UnsafeIndicator(frame);
  state.heater = HeaterWord(frame.Integer(Field::kHb));
  state.relay = RelayWord(frame.Integer(Field::kRb), frame.Integer(Field::kHb));
}

void FrameInterpreter::ReadRainLightAndWind(const SensorFrame& frame, const Settings& settings, WeatherState& state) {
  state.rain = frame.Integer(Field::kR);
  state.raining = state.rain > settings.RainThreshold;
  state.rain_word = RainWord(state.rain, settings.RainThreshold);
  state.light = frame.Number(Field::kLgt);
  state.light_word = LightWord(frame.Integer(Field::kLgt), settings.LightThreshold);

  wind_.Add(WindMph(frame.Number(Field::kWnd), settings.WindMultiplier), settings.WindsAvgCnt);
  state.wind_mph = wind_.current();
  state.wind_average_mph = wind_.average();
  state.wind_gust_mph = wind_.gust();
  state.wind_word = WindWord(state.wind_mph, settings.WindSpeedCloseD, settings.WindSpeedWarn);
}

bool FrameInterpreter::Interpret(const SensorFrame& frame, const Settings& settings, double humidity_selector,
                                 WeatherState& state) {
  const bool averaged = averages_.Add(frame, settings.TempsAvgCount, state);
  state.humidity_faulty = frame.Cut(Field::kHum) == kFaultyHumidity;
  state.humidity_percent = RelativeHumidity(frame.Number(Field::kHum), state.ambient_celsius, humidity_selector);
  state.dew_point_celsius = DewPoint(state.humidity_percent, state.ambient_celsius);
  // Six characters never equal these three; the comparison is meant for units that send a short field.
  state.sky_faulty = frame.Cut(Field::kTp) == "999";
  state.sky_celsius = frame.Celsius(Field::kTp);
  const double ambient_shown = RoundToDecimals(state.ambient_celsius, 1);
  state.clear_sky_celsius = ClearSkyTemperature(state.dew_point_celsius, ambient_shown);
  // Both have at most two decimals; binary rounding errors must not decide at a limit.
  state.difference_celsius = RoundToDecimals(ambient_shown - state.sky_celsius, 2);

  // Without an ambient temperature the difference is unknown: in doubt, cloudy.
  const double compared = state.ambient_known ? state.difference_celsius : WeatherState::kNoAverage - state.sky_celsius;
  state.cloud = CloudWord(compared, settings.PartCloudyDegC, settings.FullCloudyDegC);
  state.clouds =
      CloudsFigure(state.sky_celsius, settings.CloudsThreshold, settings.PartCloudyDegC, settings.FullCloudyDegC);
  return averaged;
}

}  // namespace orvalis
