#include "alarm_logic.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace orvalis_unit {
namespace {

using std::chrono::seconds;

Readings QuietNight() {
  Readings readings{};
  for (const FieldRow& row : FieldTable()) readings[Index(row.field)] = row.default_value;
  return readings;
}

TEST(AlarmLogic, RelayAndHeater) {
  // The readings on top of a quiet, clear night, and the settings on top of those at power-up.
  using Measured = std::vector<std::pair<Field, double>>;
  using Set = std::vector<std::pair<Setting, int>>;
  const std::tuple<const char*, Measured, Set, bool, bool> cases[] = {
      {"quiet", {}, {}, false, false},
      {"rain at its limit", {{Field::kRain, 350}}, {}, false, false},
      {"rain", {{Field::kRain, 351}}, {}, true, true},
      {"rain, alarm off", {{Field::kRain, 351}}, {{Setting::kRainAlarm, 0}}, true, false},
      {"rain, limit moved", {{Field::kRain, 351}}, {{Setting::kRainThreshold, 400}}, false, false},
      {"wind at its limit", {{Field::kWind, 36}}, {}, false, false},
      {"wind", {{Field::kWind, 37}}, {}, false, true},
      {"wind, alarm off", {{Field::kWind, 37}}, {{Setting::kWindAlarm, 0}}, false, false},
      {"day, alarm off", {{Field::kLight, 100}}, {}, false, false},
      {"day", {{Field::kLight, 100}}, {{Setting::kLightAlarm, 1}}, false, true},
      {"day at its limit", {{Field::kLight, 950}}, {{Setting::kLightAlarm, 1}}, false, true},
      {"dark", {{Field::kLight, 951}}, {{Setting::kLightAlarm, 1}}, false, false},
      {"sky at its limit", {{Field::kSky, -5}}, {}, false, false},
      {"warm sky", {{Field::kSky, -4.99}}, {}, false, true},
      {"warm sky, alarm off", {{Field::kSky, 3}}, {{Setting::kCloudAlarm, 0}}, false, false},
      {"everything, relay not allowed",
       {{Field::kRain, 900}, {Field::kWind, 90}, {Field::kSky, 3}},
       {{Setting::kRelayAllowed, 0}},
       true,
       false},
      {"forced", {}, {{Setting::kRelayForced, 1}, {Setting::kRelayAllowed, 0}}, false, true},
      {"dew", {{Field::kHumidity, 757}}, {}, true, false},
      {"dew, heater not allowed", {{Field::kHumidity, 757}}, {{Setting::kHeaterAllowed, 0}}, false, false},
      {"heater forced", {}, {{Setting::kHeaterForced, 1}, {Setting::kHeaterAllowed, 0}}, true, false},
  };
  for (const auto& [name, measured, set, heater, relay] : cases) {
    Readings readings = QuietNight();
    for (const auto& [field, value] : measured) readings[Index(field)] = value;
    Settings settings = PowerUpSettings();
    for (const auto& [setting, value] : set) settings[Index(setting)] = value;
    const auto outputs = AlarmLogic().Step(readings, settings, seconds(0));
    EXPECT_EQ(outputs.heater, heater) << name;
    EXPECT_EQ(outputs.relay, relay) << name;
  }
}

TEST(AlarmLogic, RainHoldsTheRelayForItsTimeAfterItEnded) {
  AlarmLogic logic;
  const Settings settings = PowerUpSettings();
  Readings wet = QuietNight();
  wet[Index(Field::kRain)] = 500;
  EXPECT_FALSE(logic.Step(QuietNight(), settings, seconds(1)).relay) << "no rain yet";
  EXPECT_TRUE(logic.Step(wet, settings, seconds(100)).relay);
  EXPECT_TRUE(logic.Step(QuietNight(), settings, seconds(159)).relay);
  EXPECT_FALSE(logic.Step(QuietNight(), settings, seconds(160)).relay);
}

TEST(AlarmLogic, CloudsEndClearlyBelowTheirThreshold) {
  AlarmLogic logic;
  const auto relay_at = [&logic](double sky) {
    Readings readings = QuietNight();
    readings[Index(Field::kSky)] = sky;
    return logic.Step(readings, PowerUpSettings(), seconds(0)).relay;
  };
  EXPECT_FALSE(relay_at(-6));
  EXPECT_TRUE(relay_at(-4));
  EXPECT_TRUE(relay_at(-6.9));
  EXPECT_FALSE(relay_at(-7));
  EXPECT_FALSE(relay_at(-6));
}

}  // namespace
}  // namespace orvalis_unit
