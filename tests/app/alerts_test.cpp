#include "app/alerts.h"

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
  EXPECT_EQ(Given({Kind::kRain}, 1), "rain.wav ");
}

}  // namespace
}  // namespace orvalis
