#include "acquisition/alerts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/run_time_error.h"
#include "tests/support/fake_event_loop.h"

namespace orvalis {
namespace {

class AlertsTest : public testing::Test, public SoundPlayer, public ProgramStarter {
 protected:
  AlertsTest() {
    settings.g_bchkEnableSounds = 1;
    for (const auto member :
         {&Settings::g_bchkRainSounds, &Settings::g_bchkWindSounds, &Settings::g_bchkLightSounds,
          &Settings::g_bchkCloudSounds, &Settings::g_bchkRelaySounds, &Settings::g_bchkRainApp,
          &Settings::g_bchkWindApp, &Settings::g_bchkLightApp, &Settings::g_bchkCloudApp, &Settings::g_bchkRelayApp}) {
      settings.*member = 1;
    }
    settings.g_sRainSounds = "rain.wav";
    settings.g_sRainApp = "rain.sh";
    settings.g_sRelaySounds = "relay.wav";
    settings.g_sRelayApp = "relay.sh";
  }

  void Play(const std::string& path) override { Give(path); }
  void Start(const std::string& path) override { Give(path); }
  void Give(const std::string& path) {
    if (!failure.empty()) throw RunTimeError(RunTimeError::kFileNotFound, failure);
    given += path + " ";
  }
  /// Runs `cycles` checks of one kind and returns what was given in them.
  std::string Given(Alerts::Kind kind, int cycles) {
    given.clear();
    for (int i = 0; i < cycles; ++i) alerts.Check(kind, settings, weather);
    return given;
  }

  Settings settings;
  WeatherState weather;
  test::FakeClock clock;
  EventList events{clock};
  std::string given;
  std::string failure;
  Alerts alerts{*this, *this, events};
};

TEST_F(AlertsTest, OnceWhenTheConditionBeginsOrEveryCycle) {
  weather.raining = true;
  EXPECT_EQ(Given(Alerts::Kind::kRain, 3), "rain.wav rain.sh ");
  weather.raining = false;
  EXPECT_EQ(Given(Alerts::Kind::kRain, 2), "");
  weather.raining = true;
  settings.g_bchkRepeatSounds = 1;
  EXPECT_EQ(Given(Alerts::Kind::kRain, 2), "rain.wav rain.sh rain.wav ");
  settings.g_bchkRepeatApp = 1;
  settings.g_bchkRainSounds = 0;
  EXPECT_EQ(Given(Alerts::Kind::kRain, 2), "rain.sh rain.sh ");
}

TEST_F(AlertsTest, TheMasterSwitchSilencesSoundsAndPrograms) {
  settings.g_bchkEnableSounds = 0;
  weather.raining = true;
  weather.relay = {"Y", Colour::kRed};
  EXPECT_EQ(Given(Alerts::Kind::kRain, 2) + Given(Alerts::Kind::kRelay, 2), "");
}

// A relay that opens and closes all night must not wake the owner each time.
TEST_F(AlertsTest, TheRelaySoundsOncePerEnablingOfTheAlerts) {
  weather.relay = {"Y", Colour::kRed};
  EXPECT_EQ(Given(Alerts::Kind::kRelay, 3), "relay.wav relay.sh ");
  weather.relay = {"N", Colour::kGreen};
  EXPECT_EQ(Given(Alerts::Kind::kRelay, 3), "");
  weather.relay = {"Y", Colour::kRed};
  EXPECT_EQ(Given(Alerts::Kind::kRelay, 3), "");
  settings.g_bchkEnableSounds = 0;
  Given(Alerts::Kind::kRelay, 1);
  settings.g_bchkEnableSounds = 1;
  EXPECT_EQ(Given(Alerts::Kind::kRelay, 1), "relay.wav relay.sh ");
}

TEST_F(AlertsTest, EachKindHasItsOwnConditionAndFiles) {
  settings.g_sWindSounds = "wind.wav";
  settings.g_sLightApp = "light.sh";
  settings.g_sCloudSounds = "cloud.wav";
  settings.g_bchkWindApp = settings.g_bchkLightSounds = settings.g_bchkCloudApp = 0;
  weather.wind_word = {"Breeze", Colour::kYellow};
  weather.light_word = {"Dusk", Colour::kYellow};
  weather.cloud = {"PCloudy", Colour::kYellow};
  const auto all = [&] {
    std::string text;
    for (const auto kind : {Alerts::Kind::kWind, Alerts::Kind::kLight, Alerts::Kind::kCloud}) text += Given(kind, 1);
    return text;
  };
  EXPECT_EQ(all(), "");
  weather.wind_word = {"Windy", Colour::kRed};
  weather.light_word = {"Day", Colour::kRed};
  weather.cloud = {"Cloudy", Colour::kRed};
  EXPECT_EQ(all(), "wind.wav light.sh cloud.wav ");
}

TEST_F(AlertsTest, AFailureIsListedOnceAndTheNextAlertWorks) {
  weather.raining = true;
  settings.g_bchkRepeatSounds = 1;
  failure = "there is no file rain.wav";
  Given(Alerts::Kind::kRain, 50);
  ASSERT_EQ(events.events().size(), 2u);
  EXPECT_EQ(events.events()[0].text, "the rain sound: there is no file rain.wav");
  EXPECT_EQ(events.events()[1].text, "the rain program: there is no file rain.wav");
  failure.clear();
  EXPECT_EQ(Given(Alerts::Kind::kRain, 1), "rain.wav ");
}

}  // namespace
}  // namespace orvalis
