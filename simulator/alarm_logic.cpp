#include "alarm_logic.h"

namespace orvalis_unit {
namespace {

// About 85 percent of relative humidity at 10 degrees, where dew forms within the next three degrees of cooling.
constexpr double kDewHumidityCount = 757.0;

constexpr double kHysteresisPerDegree = 10.0;

}  // namespace

AlarmLogic::Outputs AlarmLogic::Step(const Readings& readings, const Settings& settings, Time unit_time) {
  const auto is_on = [&settings](Setting setting) { return settings[Index(setting)] != 0; };
  const bool alarm = AnyAlarm(readings, settings, unit_time);

  // The heater keeps dew off the rain sensor and dries it after rain.
  const bool wants_heat = readings[Index(Field::kHumidity)] >= kDewHumidityCount ||
                          readings[Index(Field::kRain)] > settings[Index(Setting::kRainThreshold)];
  return {.heater = is_on(Setting::kHeaterForced) || (is_on(Setting::kHeaterAllowed) && wants_heat),
          .relay = is_on(Setting::kRelayForced) || (is_on(Setting::kRelayAllowed) && alarm)};
}

// Every condition is tracked even if its alarm is disabled, so that enabling one takes effect at once.
bool AlarmLogic::AnyAlarm(const Readings& readings, const Settings& settings, Time unit_time) {
  const auto reading = [&readings](Field field) { return readings[Index(field)]; };
  const auto setting = [&settings](Setting which) { return settings[Index(which)]; };

  bool wet = reading(Field::kRain) > setting(Setting::kRainThreshold);
  if (wet) {
    has_rained_ = true;
    last_rain_ = unit_time;
  } else {
    wet = has_rained_ && unit_time - last_rain_ < std::chrono::seconds(setting(Setting::kRainOnTime));
  }

  // Hysteresis: once cloudy, the sky must get clearly colder to count as clear, or the relay would chatter.
  const double hysteresis = is_cloudy_ ? setting(Setting::kHysteresis) / kHysteresisPerDegree : 0.0;
  is_cloudy_ = reading(Field::kSky) > setting(Setting::kCloudsThreshold) - hysteresis;

  const bool windy = reading(Field::kWind) > setting(Setting::kWindThreshold);
  const bool light = reading(Field::kLight) <= setting(Setting::kLightThreshold);
  return (wet && setting(Setting::kRainAlarm) != 0) || (windy && setting(Setting::kWindAlarm) != 0) ||
         (light && setting(Setting::kLightAlarm) != 0) || (is_cloudy_ && setting(Setting::kCloudAlarm) != 0);
}

}  // namespace orvalis_unit
