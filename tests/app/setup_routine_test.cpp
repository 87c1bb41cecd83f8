#include "app/setup_routine.h"

#include <algorithm>
#include <deque>
#include <functional>
#include <map>

#include "app/setup_advice.h"
#include "app/setup_meanings.h"
#include "tests/support/link_fixture.h"

namespace orvalis {
namespace {

using test::Strings;

std::size_t FieldIndex(std::string_view name) {
  const auto fields = SetupFields();
  return static_cast<std::size_t>(
      std::find_if(fields.begin(), fields.end(), [&](const SetupField& f) { return f.name == name; }) - fields.begin());
}

/// One field of each kind of rule: bad text, and text out of range.
TEST(SetupFields, BadInputGetsItsMessageAndReplacement) {
  const std::tuple<const char*, const char*, const char*, double> rows[] = {
      {"Lpt_addr", "x", "invalid input in LPT address", -9999},
      {"WindSpeedWarn", "-1", "invalid input in WindSpeedWarn, must be >= 0", 9999},
      {"StepTime", "0", "invalid input in Step Time, must be > 0", -9999},
      {"TempAvgCnt", "0", "invalid input in Temp Avg Count, must be 1 through 300", 9999},
      {"SafeHoldSeconds", "3601", "invalid input in Hold before safe, must be 0 through 3600", -9999},
      {"SafeHoldSeconds", "-1", "invalid input in Hold before safe, must be 0 through 3600", -9999},
      {"SafeHoldSeconds", "3600", "", 3600},
      {"NetworkPort", "0", "invalid input in Port, must be 1 through 65535", -9999},
      {"NetworkPort", "65536", "invalid input in Port, must be 1 through 65535", -9999},
      {"NetworkPort", "65535", "", 65535},
      {"TPTempHysteresis", "x", "invalid input in Temp hysteresis value, 9.9 to 0.1", -9999},
      {"LightThreshold", "x", "invalid input in LightThreshold, 1 to 1000, defaulted to 950", 300},
      {"CloudThreshCL", "x", "invalid input in CloudThreshC, defaulted to -5.0", -5},
      // Good, or at least accepted as typed.
      {"RainThreshold", "2000", "", 2000},
      {"TempAvgCnt", "300", "", 300},
      {"CloudThreshCL", "-5.5", "", -6},
      {"CloudThreshCL", "-4.5", "", -4},
      {"TPTempHysteresis", "50.5", "", 50.5},
  };
  for (const auto& [field, text, message, value] : rows) {
    const SetupReading reading = ReadSetupField(SetupFields()[FieldIndex(field)], text, {});
    EXPECT_EQ(reading.message, message) << field << " " << text;
    EXPECT_EQ(reading.value, value) << field << " " << text;
  }
}

// Before OK, at the box: what would be stored, what the unit would get, and limits that cross each other.
TEST(SetupFields, TheAdviceSaysWhatOkWouldStore) {
  Settings settings;
  settings.WindSpeedWarn = 8;
  settings.WindSpeedCloseD = 12;
  settings.FullCloudyDegC = 19;
  settings.PartCloudyDegC = 22;
  for (const char* above_zero : {"StepTime", "MaxInc", "TempMax", "TempsAvgCount", "TempSteps"}) {
    SetFromText(*FindSettingKey(above_zero), "1", {}, settings);
  }
  Strings good;
  for (const SetupField& field : SetupFields()) good.push_back(SetupFieldText(field, settings, {}));
  EXPECT_EQ(AdviceOnSetup(good, {}), std::vector<Message>(good.size()));
  const std::tuple<const char*, const char*, const char*> rows[] = {
      {"PartCloudyDegCL", "x", "stores 0: not a whole number; \"Clear\" is below \"Cloudy\""},
      {"TempAvgCnt", "301", "stores 9999: must be 1 through 300"},
      {"StepTime", "0", "must be above 0: OK returns here"},
      {"SafeHoldSeconds", "", "empty: OK returns here"},
      {"Lpt_addr", "-9999", "-9999 cannot be stored: OK returns here"},
      {"TPTempHysteresis", "120", "the unit gets 200 (it takes three digits, of tenths)"},
      {"CloudThreshCL", "-5.4", "stores -5: a whole number is needed"},
      {"WindSpeedCloseD", "12,5", "stores 12.5"},
      {"WindSpeedCloseD", "7", "\"Windy\" is below \"Breeze\""},
      {"RainThreshold", "99999999999", "stores 400: too large"},
  };
  for (const auto& [field, text, advice] : rows) {
    Strings texts = good;
    texts[FieldIndex(field)] = text;
    EXPECT_EQ(AdviceOnSetup(texts, {})[FieldIndex(field)].English(), advice) << field;
  }
}

// Beside the limits: the values of now, and what would become of them, before OK and in the unit's own arithmetic.
TEST(SetupMeanings, ALimitIsTriedOnTheReadingOfNow) {
  Observation now;
  now.source = ReadingSource::kUnit;
  now.values.difference_c = 20;
  now.values.sky_c = -6;
  now.figures.rain = 355;
  now.figures.wind = 12;
  now.figures.light = 950;
  TypedSetup typed;
  typed.settings.WindSpeedWarn = 8;
  typed.settings.WindSpeedCloseD = 12;
  typed.settings.WindMultiplier = 9;
  typed.settings.FullCloudyDegC = 19;
  typed.settings.PartCloudyDegC = 22;
  typed.settings.RainThreshold = 350;
  typed.settings.LightThreshold = 950;
  typed.settings.WindThreshold = 36;
  typed.settings.CloudsThreshold = -5;
  typed.settings.TPTempHysteresis = 2;
  typed.unit = {.allow_clouds = true, .allow_light = true};
  typed.unit_known = true;
  const std::tuple<const char*, std::function<void()>, const char*, Colour> rows[] = {
      {"WindWordNow", [] {}, "Now 10.8 mph: Breeze", Colour::kYellow},
      {"WindWordNow", [&] { typed.settings.WindMultiplier = 5; }, "Now 6.0 mph: Calm", Colour::kGreen},
      {"WindWordNow", [&] { typed.units.wind = WindUnit::kKnots; },
       "Now 6.0 mph (5.2 kn): Calm\nLimits: 7.0 kn, 10.4 kn", Colour::kGreen},
      {"SkyWordNow", [&] { typed.units.centigrade = false; },
       "Now 20.0 °C (36.0 °F): PCloudy\nLimits: 34.2 °F, 39.6 °F", Colour::kYellow},
      {"RainWordNow", [] {}, "Now 355 counts: Damp", Colour::kYellow},
      {"LightWordNow", [] {}, "Now 950 counts: Dusk", Colour::kYellow},
      {"WindAlarmNow", [] {}, "Now 12 counts, 5.2 kn: no alarm\nLimit: 15.6 kn", Colour::kGreen},
      // 1011 arrives as 011.
      {"WindAlarmNow", [&] { typed.settings.WindThreshold = 1011; },
       "Now 12 counts, 5.2 kn: past the limit, but the alarm is off\nLimit: 4.8 kn", Colour::kYellow},
      {"RainAlarmNow", [] {}, "Now 355 counts: UNSAFE if this alarm is on", Colour::kYellow},
      {"RainAlarmNow", [&] { typed.unit.allow_rain = true; }, "Now 355 counts: alarm, UNSAFE", Colour::kRed},
      {"RainAlarmNow", [&] { now.figures.rain = 340, now.figures.rain_on_left = std::chrono::milliseconds(41500); },
       "Now 340 counts: no alarm, but rain has only just ended: 42 s left", Colour::kYellow},
      {"CloudAlarmNow", [] {},
       "Now -6.0 °C (21.2 °F): no new alarm; one that is on ends at -7.0 °C (19.4 °F)\nLimit: 23.0 °F",
       Colour::kYellow},
      {"CloudAlarmNow", [&] { typed.settings.CloudsThreshold = -7; },
       "Now -6.0 °C (21.2 °F): alarm, UNSAFE\nLimit: 19.4 °F", Colour::kRed},
      {"LightAlarmNow", [&] { typed.unit_known = false; }, "Now 950 counts: UNSAFE if this alarm is on",
       Colour::kYellow},
      {"LightAlarmNow", [&] { typed.settings.LightThreshold = 949; }, "Now 950 counts: no alarm", Colour::kGreen},
      {"SkyWordNow", [&] { now.values = {}; }, "Not known now", Colour::kWhite},
      {"LightAlarmNow", [&] { now.source = ReadingSource::kDemo; }, "Demo: 950 counts: no alarm", Colour::kGreen},
      {"LightAlarmNow", [&] { now.source = ReadingSource::kNone; }, "No reading now", Colour::kWhite},
  };
  for (const auto& [name, change, text, colour] : rows) {
    change();
    for (const LimitMeaning& meaning : MeaningsNow(typed, now)) {
      if (meaning.name != name) continue;
      EXPECT_EQ(meaning.text.English(), text);
      EXPECT_EQ(meaning.colour, colour) << text;
    }
  }
}

/// A user who does, each time the dialog is shown, the next thing on a list.
class ScriptedDialog : public SetupDialog {
 public:
  using Visit = std::function<bool(SetupForm&)>;

  bool Exec(SetupForm& form) override {
    shown.push_back(form);
    if (visits.empty()) return false;
    const Visit visit = visits.front();
    visits.pop_front();
    return visit(form);
  }
  void ShowUnit(const UnitOptions& unit, bool known) override {
    unit_shown = known ? std::optional(unit) : std::nullopt;
  }
  void ShowMessage(std::string_view text) override {
    messages.emplace_back(text);
    if (behind_message) behind_message();
  }
  void BringToFront() override { ++brought_to_front; }

  std::deque<Visit> visits;
  std::vector<SetupForm> shown;
  Strings messages;
  std::optional<UnitOptions> unit_shown;
  std::function<void()> behind_message;
  int brought_to_front = 0;
};

class SetupRoutineTest : public test::LinkFixture {
 protected:
  SetupRoutineTest() {
    settings = store.LoadSettings();
    profile.log.clear();
    poll_timer.enabled = true;
  }
  /// Types these texts into the fields of these names, and confirms.
  static ScriptedDialog::Visit Type(std::map<std::string, std::string> texts) {
    return [texts = std::move(texts)](SetupForm& form) {
      for (const auto& [field, text] : texts) form.texts[FieldIndex(field)] = text;
      return true;
    };
  }
  void Run(std::deque<ScriptedDialog::Visit> visits) {
    dialog.visits = std::move(visits);
    routine.Run();
    EXPECT_TRUE(poll_timer.enabled && !dialog_timer.enabled) << "afterwards, whatever happened";
  }

  bool unit_known = true;
  std::vector<std::int32_t> ports_served;
  std::vector<std::int32_t> brokers;
  test::FakeTimer poll_timer;
  test::FakeTimer dialog_timer;
  Leftovers leftovers;
  ScriptedDialog dialog;
  SetupRoutine routine{{.store = store,
                        .settings = settings,
                        .unit = options,
                        .unit_known = [this] { return unit_known; },
                        .poll_timer = poll_timer,
                        .dialog_timer = dialog_timer,
                        .dialog = dialog,
                        .leftovers = leftovers,
                        .window = nullptr,
                        .network_changed = [this] { ports_served.push_back(settings.NetworkPort); },
                        .mqtt_changed = [this] { brokers.push_back(settings.MqttPort); }}};
};

TEST_F(SetupRoutineTest, OkStoresThePortFirstAndThenEveryKey) {
  Run({[this](SetupForm& form) {
    EXPECT_FALSE(poll_timer.enabled);
    EXPECT_TRUE(dialog_timer.enabled) << "the readings go on";
    EXPECT_EQ(dialog_timer.interval, std::chrono::seconds(1));
    EXPECT_EQ(form.port, "/dev/ttyUSB0");
    EXPECT_EQ(form.texts[FieldIndex("WindSpeedCloseD")], "12");
    form.port = "/dev/ttyACM1";
    form.texts[FieldIndex("RainThreshold")] = "360";
    form.texts[FieldIndex("WindSpeedCloseD")] = "30.5";
    form.flags.assign(form.flags.size(), true);
    form.texts[FieldIndex("SafeHoldSeconds")] = "0";
    form.choices[0] = 3;
    form.plain_texts[0] = "0.0.0.0";
    form.files[0] = "/home/a b/rain.wav";
    form.unit.allow_wind = true;
    return true;
  }});
  ASSERT_EQ(profile.log.size(), 98u);
  EXPECT_EQ(profile.log[0] + ", " + profile.log[1], "write /COM Port, write /WindSpeedCloseD");
  const std::pair<const char*, const char*> stored[] = {
      {"COM Port", "/dev/ttyACM1"}, {"RainThreshold", "360"}, {"g_sRainSounds", "/home/a b/rain.wav"},
      {"WindSpeedCloseD", "30.5"},  {"Centigrade", "True"},   {"g_bchkRainSounds", "1"},
      {"VerdictWind", "1"},         {"WindUnit", "3"}};
  for (const auto& [key, text] : stored) EXPECT_EQ(profile.At(key), text) << key;
  EXPECT_EQ(settings.RainThreshold, 360);
  EXPECT_EQ(settings.SafeHoldSeconds, 0);
  EXPECT_TRUE(options.allow_wind);
  EXPECT_TRUE(dialog.messages.empty());
}

// OK changes the switches that the user changed. A unit comes while the dialog is open, is seen there, and bad input
// brings the dialog back; another one comes behind the message.
TEST_F(SetupRoutineTest, AUnitThatComesMeanwhileKeepsItsSwitches) {
  unit_known = false;
  const UnitOptions came{.allow_relay = true, .allow_wind = true};
  dialog.visits = {[&](SetupForm& form) {
                     EXPECT_FALSE(form.unit_known);
                     options = came;
                     unit_known = true;
                     routine.FollowUnit();
                     form.unit = came;
                     form.texts[FieldIndex("StepTime")] = "0";
                     dialog.behind_message = [&] {
                       options.allow_heater = true;
                       routine.FollowUnit();
                     };
                     return true;
                   },
                   [&](SetupForm& form) {
                     EXPECT_TRUE(form.unit_known);
                     EXPECT_EQ(form.unit, came);
                     dialog.behind_message = {};
                     routine.FollowUnit();
                     EXPECT_EQ(dialog.unit_shown, options) << "told anew";
                     form.unit = options;
                     form.unit.allow_wind = false;
                     options.allow_light = true;  // nobody has told the dialog yet
                     form.texts[FieldIndex("StepTime")] = "0.5";
                     return true;
                   }};
  routine.Run();
  EXPECT_EQ(options, (UnitOptions{.allow_heater = true, .allow_relay = true, .allow_light = true}));
}

TEST_F(SetupRoutineTest, CancelLeavesEverythingAsItWas) {
  const auto before = profile.values;
  Run({[](SetupForm& form) {
    form.texts.assign(form.texts.size(), "7");
    form.flags.flip();
    form.unit.force_relay = true;
    return false;
  }});
  EXPECT_EQ(profile.values, before);
  EXPECT_EQ(settings.RainThreshold, 350);
  EXPECT_FALSE(options.force_relay);
}

// The sentinel shows the dialog again with what the user typed; other replacements are stored as they are.
TEST_F(SetupRoutineTest, TheRoundTripKeepsTheUsersText) {
  Run({Type({{"StepTime", "0"}, {"RainThreshold", "77"}}), Type({{"StepTime", "0.5"}, {"TempAvgCnt", "301"}})});
  ASSERT_EQ(dialog.messages.size(), 2u);
  ASSERT_EQ(dialog.shown.size(), 2u);
  EXPECT_EQ(dialog.shown[1].texts[FieldIndex("StepTime")], "0");
  EXPECT_EQ(dialog.shown[1].texts[FieldIndex("RainThreshold")], "77");
  EXPECT_EQ(settings.StepTime, 0.5);
  EXPECT_EQ(settings.RainThreshold, 77);
  EXPECT_EQ(profile.At("TempsAvgCount", "Capabilities"), "9999") << "a replacement is stored as it is";
}

TEST_F(SetupRoutineTest, AStoreThatFailsKeepsTheDialogOpenAndNothingIsTaken) {
  profile.fails = true;
  Run({Type({{"RainThreshold", "77"}}), [](SetupForm&) { return false; }});
  EXPECT_EQ(dialog.messages, Strings{"cannot write the settings to memory: full"});
  EXPECT_EQ(dialog.shown.size(), 2u);
  EXPECT_EQ(settings.RainThreshold, 350);
}

TEST_F(SetupRoutineTest, OkServesTheNetworkAgainWhenItsSettingsChanged) {
  settings.NetworkPort = 0;
  Run({Type({})});
  EXPECT_EQ(settings.NetworkEnabled, 0) << "without a port nothing was served, and OK must not change that";
  EXPECT_EQ(settings.NetworkPort, 11111);
  Run({Type({{"RainThreshold", "77"}})});
  Run({Type({{"NetworkPort", "11112"}})});
  Run({Type({{"MqttPort", "1884"}})});
  EXPECT_EQ(ports_served, (std::vector{11111, 11112})) << "its clients keep their lines when MQTT changes";
  EXPECT_EQ(brokers, std::vector{1884});
}

TEST_F(SetupRoutineTest, ASecondRequestBringsTheOpenDialogToTheFront) {
  Run({[this](SetupForm&) {
    routine.Run();
    return false;
  }});
  EXPECT_EQ(dialog.brought_to_front, 1);
  EXPECT_EQ(dialog.shown.size(), 1u);
}

TEST_F(SetupRoutineTest, LeftoversAreClampedAfterwards) {
  settings.Position = 500;
  routine.Run();
  EXPECT_EQ(settings.Position, 12);  // the wind limit stands where the template had its maximum step
  EXPECT_EQ(leftovers.compensation_state, 1);
}

}  // namespace
}  // namespace orvalis
