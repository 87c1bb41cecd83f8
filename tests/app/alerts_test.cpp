#include "app/alerts.h"

#include <map>
#include <string>
#include <utility>

#include "app/safety_alerts.h"
#include "tests/support/link_fixture.h"

namespace orvalis {
namespace {

using Kind = Alerts::Kind;

class AlertsTest : public test::LinkFixture {
 protected:
  AlertsTest() {
    using S = Settings;
    weather.ambient_known = true;
    settings.g_bchkEnableSounds = 1;
    const auto set = [&](const std::string& name, auto sound, auto sound_file, auto program, auto program_file) {
      settings.*sound = settings.*program = 1;
      settings.*sound_file = name + ".wav";
      settings.*program_file = name + ".sh";
    };
    set("rain", &S::g_bchkRainSounds, &S::g_sRainSounds, &S::g_bchkRainApp, &S::g_sRainApp);
    set("wind", &S::g_bchkWindSounds, &S::g_sWindSounds, &S::g_bchkWindApp, &S::g_sWindApp);
    set("light", &S::g_bchkLightSounds, &S::g_sLightSounds, &S::g_bchkLightApp, &S::g_sLightApp);
    set("cloud", &S::g_bchkCloudSounds, &S::g_sCloudSounds, &S::g_bchkCloudApp, &S::g_sCloudApp);
    set("relay", &S::g_bchkRelaySounds, &S::g_sRelaySounds, &S::g_bchkRelayApp, &S::g_sRelayApp);
  }

  /// Runs `cycles` checks of each kind in turn and returns what was given in them.
  std::string Given(const std::vector<Kind>& kinds, int cycles) {
    alerted.given.clear();
    for (const Kind kind : kinds) {
      for (int i = 0; i < cycles; ++i) alerts.Check(kind, settings, weather);
    }
    return alerted.given;
  }
};

TEST_F(AlertsTest, OnceWhenTheConditionBeginsOrEveryCycle) {
  weather.raining = true;
  EXPECT_EQ(Given({Kind::kRain}, 3), "rain.wav rain.sh ");
  weather.raining = false;
  EXPECT_EQ(Given({Kind::kRain}, 2), "");
  weather.raining = true;
  settings.g_bchkRepeatSounds = 1;
  EXPECT_EQ(Given({Kind::kRain}, 2), "rain.wav rain.sh rain.wav ");
  settings.g_bchkRepeatApp = 1;
  settings.g_bchkRainSounds = 0;
  EXPECT_EQ(Given({Kind::kRain}, 2), "rain.sh rain.sh ");
  settings.g_bchkEnableSounds = 0;
  weather.relay.text = "Y";
  EXPECT_EQ(Given({Kind::kRain, Kind::kRelay}, 2), "") << "the master switch silences sounds and programs";
}

// A relay that opens and closes all night must not wake the owner each time.
// Its program closes the roof, and has to.
TEST_F(AlertsTest, TheRelaySoundsOncePerEnablingAndItsProgramStartsEachTime) {
  std::string course;
  for (const char* relay : {"Y", "N", "Y"}) {
    weather.relay.text = relay;
    course += Given({Kind::kRelay}, 3) + "| ";
  }
  EXPECT_EQ(course, "relay.wav relay.sh | | relay.sh | ");
  settings.g_bchkEnableSounds = 0;
  Given({Kind::kRelay}, 1);
  settings.g_bchkEnableSounds = 1;
  EXPECT_EQ(Given({Kind::kRelay}, 1), "relay.wav relay.sh ");
}

TEST_F(AlertsTest, EachKindHasItsOwnConditionAndFiles) {
  const auto given_at = [&](const char* wind, const char* light, const char* cloud) {
    weather.wind_word.text = wind;
    weather.light_word.text = light;
    weather.cloud.text = cloud;
    return Given({Kind::kWind, Kind::kLight, Kind::kCloud}, 1);
  };
  EXPECT_EQ(given_at("Breeze", "Dusk", "PCloudy"), "");
  EXPECT_EQ(given_at("Windy", "Day", "Cloudy"), "wind.wav wind.sh light.wav light.sh cloud.wav cloud.sh ");
  // Without a temperature nobody knows whether the sky has changed: no alert now, and none again afterwards.
  weather.ambient_known = false;
  EXPECT_EQ(given_at("Calm", "Dark", "Cloudy"), "");
  weather.ambient_known = true;
  EXPECT_EQ(given_at("Calm", "Dark", "Cloudy"), "");
  settings.g_bchkWindApp = settings.g_bchkLightSounds = settings.g_bchkCloudApp = 0;
  EXPECT_EQ(given_at("Calm", "Dark", "Clear"), "");
  EXPECT_EQ(given_at("Windy", "Day", "Cloudy"), "wind.wav light.sh cloud.wav ");
}

TEST_F(AlertsTest, AFailureIsListedOnceAndTheNextAlertWorks) {
  weather.raining = true;
  settings.g_bchkRepeatSounds = 1;
  alerted.failure = "there is no file rain.wav";
  Given({Kind::kRain}, 50);
  EXPECT_EQ(EventTexts(), (test::Strings{"the rain sound: there is no file rain.wav",
                                         "the rain program: there is no file rain.wav"}));
  alerted.failure.clear();
  EXPECT_EQ(Given({Kind::kRain}, 50).substr(0, 18), "rain.wav rain.wav ");
  EXPECT_EQ(events.events().size(), 3u);
  EXPECT_EQ(LastEvent(), "alert rain: played rain.wav");
}

class SafetyAlertsTest : public test::LinkFixture {
 protected:
  SafetyAlertsTest() {
    settings.UnsafeApp = "unsafe";
    settings.SafeApp = "safe";
    settings.SafeSound = "bell";
    settings.NoReadingsApp = "silence";
    observer.Listen([this](const Observation& now, const Observer::News&) { safety.Note(now); });
  }
  /// What was given since it was asked for last.
  std::string Given() { return std::exchange(alerted.given, {}); }
  /// What the program started last found in its environment; "none" for what it did not.
  std::string Fact(const std::string& name) {
    for (const AlertFact& fact : alerted.calls.back().facts) {
      if (fact.name == "ORVALIS_" + name && fact.value) return *fact.value;
    }
    return "none";
  }
  void End(const std::string& failure) { alerted.calls.back().ended(failure); }

  SafetyAlerts safety{{.loop = loop,
                       .settings = settings,
                       .observer = observer,
                       .sounds = alerted,
                       .programs = alerted,
                       .events = events}};
};

// A start without rain is unsafe too, but only the first reading can tell.
TEST_F(SafetyAlertsTest, TheFirstUnsafeComesWithTheFirstReadingAndItsFacts) {
  observer.Update();
  port.frame = test::LiveFrame("R=0900 TP=-04000");
  Connect();
  EXPECT_EQ(Given(), "") << "there cannot be a reading yet";
  Tick(4);
  EXPECT_EQ(Given(), "unsafe ");
  // As the demonstration line's fields have them: 5.0 degrees in the air; 20 counts of wind are 18 mph, 8.047 m/s.
  const std::map<std::string, std::string> facts{
      {"ALERT", "unsafe"},  {"VERDICT", "unsafe"},  {"REASONS", "rain"},   {"TEST", "0"},      {"SOURCE", "unit"},
      {"AGE_SECONDS", "0"}, {"RAIN_COUNTS", "900"}, {"WIND_M_S", "8.047"}, {"AMBIENT_C", "5"}, {"SKY_C", "-40"}};
  for (const auto& [name, value] : facts) EXPECT_EQ(Fact(name), value) << name;
}

TEST_F(SafetyAlertsTest, EachChangeIsGivenWithItsSilenceAndItsEnd) {
  observer.Update();
  Tick(9);
  EXPECT_EQ(Given(), "");
  Tick(2);
  EXPECT_EQ(Given(), "unsafe silence ") << "ten seconds without any reading";
  EXPECT_EQ(Fact("REASONS") + Fact("AGE_SECONDS") + Fact("AMBIENT_C"), "no_connectionnonenone");
  Connect(20);
  EXPECT_EQ(Given(), "safe bell ");
  Silence(30);
  EXPECT_EQ(Given(), "unsafe silence ") << "once";
  Measure("", 20);
  EXPECT_EQ(Given(), "safe bell ");
  observer.Stop();
  EXPECT_EQ(Given(), "unsafe ");
  EXPECT_EQ(Fact("REASONS"), "stopping");
}

// A program may do nothing in a test: it must hear when the test turns into rain.
TEST_F(SafetyAlertsTest, ATestIsCalledOneUntilItRains) {
  Connect(20);
  Given();
  observer.TestUnsafe();
  EXPECT_EQ(Given() + Fact("TEST"), "unsafe 1");
  Measure("R=0900", 4);
  EXPECT_EQ(Given() + Fact("TEST"), "unsafe 0");
  Measure("", 60);
  EXPECT_EQ(Given(), "safe bell ");
  settings.SafetyAlerts = 0;
  Silence(20);
  EXPECT_EQ(Given(), "");
}

TEST_F(SafetyAlertsTest, AProgramThatFailsIsTriedAgainWhileItsVerdictStays) {
  Connect(20);
  Given();
  alerted.failure = "there is no file";
  Silence(12);
  EXPECT_EQ(LastEvent(), "alert No readings: there is no file; trying again in 10 s");
  alerted.failure.clear();
  settings.NoReadingsApp.clear();
  loop.Advance(std::chrono::seconds(10));
  EXPECT_EQ(Given(), "unsafe ");
  End("ended with code 3");
  EXPECT_EQ(LastEvent(), "alert Unsafe: unsafe ended with code 3; trying again in 30 s");
  loop.Advance(std::chrono::seconds(29));
  EXPECT_EQ(Given(), "");
  loop.Advance(std::chrono::seconds(1));
  EXPECT_EQ(Given() + LastEvent(), "unsafe alert Unsafe: started unsafe");
  End("ended with code 3");
  loop.Advance(std::chrono::seconds(60));
  EXPECT_EQ(Given(), "unsafe ");
  End("ended with code 3");
  EXPECT_EQ(LastEvent(), "alert Unsafe: unsafe ended with code 3; given up after 4 attempts");
  loop.Advance(std::chrono::minutes(5));
  EXPECT_EQ(Given(), "");
  Measure("", 20);
  EXPECT_EQ(Given(), "safe bell ");
  End("ended with code 1");
  Silence(12);
  EXPECT_EQ(Given(), "unsafe ") << "it is not safe any more";
}

}  // namespace
}  // namespace orvalis
