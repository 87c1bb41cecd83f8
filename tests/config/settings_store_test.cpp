#include "config/settings_store.h"

#include <sstream>

#include "app/profile_command.h"
#include "app/startup.h"
#include "base/run_time_error.h"
#include "tests/support/link_fixture.h"

namespace orvalis {
namespace {

class SettingsStoreTest : public testing::Test {
 protected:
  test::MemoryProfile profile;
  SettingsStore store{profile, "/opt/orvalis", {}};
};

TEST_F(SettingsStoreTest, AFreshStoreGetsTheStampFirstAndEveryDefault) {
  const Settings settings = store.LoadSettings();
  EXPECT_EQ(profile.log.front(), "write /RegVer");
  EXPECT_EQ(profile.values.size(), 84u);
  EXPECT_EQ(profile.At("RegVer"), "2.18");
  EXPECT_EQ(profile.At("Thermistor_C"), "-0.000000713329");
  EXPECT_EQ(profile.At("CanTempComp", "Capabilities"), "True");
  EXPECT_EQ(profile.At("g_sFullLogPath"), "/opt/orvalis");
  EXPECT_FALSE(profile.values.contains({"", "COM Port"}));
  EXPECT_EQ(settings.RainThreshold, 350);
  EXPECT_DOUBLE_EQ(settings.CloudsThreshold, -5);
}

TEST_F(SettingsStoreTest, AnotherStampResetsEverything) {
  for (const char* stamp : {"2.17", "2.18 ", ""}) {
    store.LoadSettings();
    profile.values[{"", "RegVer"}] = stamp;
    profile.values[{"", "RainThreshold"}] = "500";
    EXPECT_EQ(store.LoadSettings().RainThreshold, 350) << stamp;
    EXPECT_EQ(profile.At("RainThreshold"), "350") << stamp;
  }
  profile.values[{"", "RainThreshold"}] = "500";
  EXPECT_EQ(store.LoadSettings().RainThreshold, 500);
}

TEST_F(SettingsStoreTest, WhatCannotBeReadIsMendedOrRefused) {
  store.LoadSettings();
  for (const char* text : {"", "abc"}) {
    profile.values[{"", "AutoConnect"}] = text;
    profile.log.clear();
    EXPECT_EQ(store.LoadSettings().AutoConnect, 0);
    EXPECT_EQ(profile.TakeLog(), test::Strings{"write /AutoConnect"});
    EXPECT_EQ(profile.At("AutoConnect"), "0");
  }
  for (const auto& [key, text] : {std::pair{"VerdictWind", "2"}, {"SafeHoldSeconds", "3601"}, {"DemoCanBeSafe", "2"}}) {
    profile.values[{"", key}] = text;
  }
  const Settings settings = store.LoadSettings();
  EXPECT_EQ(std::tuple(settings.VerdictWind, settings.SafeHoldSeconds, settings.DemoCanBeSafe), std::tuple(1, 60, 0))
      << "what cannot be read must not open a roof";
}

// In a locale with a comma the defaults must come back as the numbers they are, not a hundred times larger.
TEST_F(SettingsStoreTest, DefaultsSurviveACommaLocale) {
  SettingsStore german(profile, "/opt/orvalis", {.decimal_separator = ','});
  const Settings settings = german.LoadSettings();
  EXPECT_DOUBLE_EQ(settings.WindSpeedCloseD, 12);
  EXPECT_DOUBLE_EQ(settings.Thermistor_A, -0.00045015253);
  EXPECT_EQ(profile.At("StepTime"), "0,278");
  EXPECT_EQ(profile.At("RegVer"), "2.18");
}

// What shows that a store was destroyed, and what is worth a copy.
TEST_F(SettingsStoreTest, TellsADestroyedStoreFromAnotherVersionsAndFromAnEditedOne) {
  static_cast<void>(store.LoadSettings());
  ProfileValues whole;
  for (const auto& [place, text] : profile.values) {
    whole[place.first.empty() ? place.second : place.first + "/" + place.second] = text;
  }
  const StoreRules rules = RulesForSettings({});
  const auto check = [&](const char* key, const char* text, const std::string& fault, bool good) {
    ProfileValues values = whole;
    values.erase(key);
    if (text != nullptr) values[key] = text;
    EXPECT_EQ(rules.fault(values), fault) << key;
    EXPECT_EQ(rules.good(values), good) << key;
  };
  check("RegVer", "2.18", "", true);
  check("RegVer", nullptr, "has no version stamp", false);
  check("RegVer", "2.17", "", false);
  check("Capabilities/TempMax", nullptr, "is missing \"TempMax\"", false);
  check("RainThreshold", "abc", "", false);
  check("AutoConnect", nullptr, "", true);
  EXPECT_EQ(rules.fault({}), "is empty");
  EXPECT_EQ(rules.fault({{"SettingsLost", "…"}}), "") << "the defaults follow";
}

TEST_F(SettingsStoreTest, TheProfileCommandRefusesWhatATypeCannotHold) {
  const auto run = [&](const ProfileCommand& command, const std::string& in, std::string& out) {
    std::istringstream input(in);
    std::ostringstream output;
    const int code = RunProfileCommand(command, store, input, output, output);
    out = output.str();
    return code;
  };
  using enum ProfileCommand::Verb;
  std::string out;
  EXPECT_EQ(run({.verb = kGet, .key = "RainThreshold", .value = {}, .subkey = {}}, "", out), 0);
  EXPECT_EQ(out, "350\n");
  EXPECT_EQ(profile.log, (std::vector<std::string>{"type Weather", "register Orvalis.Weather Orvalis"}))
      << "a profile may refuse a driver that it does not know; and looking must not write";

  const std::tuple<const char*, const char*, int> rows[] = {
      {"RainThreshold", "abc", 1},     {"RainThreshold", "99999999999", 1},
      {"Centigrade", "maybe", 1},      {"WindSpeedWarn", "1,5,5", 1},
      {"NoSuchKey", "1", 2},           {"WindSpeedWarn", "7.5", 0},
      {"COM Port", "/dev/ttyUSB1", 0}, {"g_sRainApp", "", 0},
      {"TempsAvgCount", "0", 1},       {"TempsAvgCount", "301", 1},
      {"RainThreshold", "-1", 1},      {"StepTime", "-9999", 1},
      {"CloudsThreshold", "-9", 0},    {"WindSpeedWarn", "7,5", 0}};
  for (const auto& [key, value, code] : rows) {
    EXPECT_EQ(run({.verb = kSet, .key = key, .value = value, .subkey = {}}, "", out), code) << key;
    EXPECT_EQ(out.empty(), code == 0) << out;
  }
  profile.values[{"", "RegVer"}] = "2.17";  // the next start keeps what has no default
  EXPECT_EQ(run({.verb = kGet, .key = "COM Port", .value = {}, .subkey = {}}, "", out), 0);
  EXPECT_EQ(out, "/dev/ttyUSB1\n");
  profile.values[{"", "RegVer"}] = "2.18";
  // The stamp is there, so that the next start does not reset what was set.
  EXPECT_DOUBLE_EQ(store.LoadSettings().WindSpeedWarn, 7.5);
  EXPECT_EQ(run({.verb = kSet, .key = "TempMax", .value = "3", .subkey = ""}, "", out), 2) << "another subkey";

  EXPECT_EQ(run({.verb = kSet, .key = "g_sPWS_password", .value = "-", .subkey = {}}, "s3cret\n", out), 0);
  EXPECT_EQ(profile.At("g_sPWS_password"), "s3cret");
  EXPECT_EQ(run({.verb = kList, .key = {}, .value = {}, .subkey = {}}, "", out), 0);
  EXPECT_EQ(out.find("s3cret"), std::string::npos);
  EXPECT_NE(out.find("Capabilities/TempMax = 5.0\n"), std::string::npos);
  profile.fails = true;
  EXPECT_EQ(run({.verb = kSet, .key = "Left", .value = "1", .subkey = {}}, "", out), 1);
}

class StartupTest : public test::LinkFixture {
 protected:
  /// The panel and the utility object write down in the profile's log what is done to them.
  struct Window : PanelWindow, UtilityObject {
    explicit Window(test::Strings& writes) : log(writes) {}
    void Place(int left, int top) override {
      log.push_back("place " + std::to_string(left) + " " + std::to_string(top));
    }
    void SetAlwaysOnTop(bool on) override { log.push_back(on ? "on top" : "not on top"); }
    void Show() override { log.push_back("show"); }
    [[nodiscard]] int Left() const override { return 33; }
    [[nodiscard]] int Top() const override { return 44; }
    void Create() override { log.push_back("utility"); }
    void Release() noexcept override { log.push_back("no utility"); }
    test::Strings& log;
  };

  Leftovers leftovers;
  Window window{profile.log};
  test::FakeTimer poll_timer;
  test::FakeTimer second_timer;
  ProgramFlags flags;
  Startup startup{{.flags = flags,
                   .utility = window,
                   .store = store,
                   .settings = settings,
                   .window = &window,
                   .switches = switches,
                   .poll_timer = poll_timer,
                   .second_timer = second_timer,
                   .connector = connector,
                   .logs = logs,
                   .leftovers = leftovers,
                   .demo_mode = [this] { return made_up; }}};
};

TEST_F(StartupTest, ComesUpInOrderAndConnectsWhenAsked) {
  profile.values[{"", "AutoConnect"}] = "1";
  profile.values[{"", "Left"}] = "-5";
  profile.values[{"", "Top"}] = "5000";
  startup.Main();
  EXPECT_EQ(profile.log, (test::Strings{"type Weather", "register Orvalis.Weather Orvalis", "utility", "write /Left",
                                        "on top", "place 100 5000", "show", "write /AutoConnect"}));
  EXPECT_EQ(profile.At("Left"), "100");
  EXPECT_EQ(poll_timer.interval, std::chrono::milliseconds(1000));
  EXPECT_TRUE(poll_timer.enabled && second_timer.enabled);
  EXPECT_TRUE(connector.connecting());
  EXPECT_TRUE(flags.started_by_user);
}

TEST_F(StartupTest, ConnectsNothingByItselfWhileTheValuesAreMadeUp) {
  profile.values[{"", "AutoConnect"}] = "1";
  made_up = true;
  startup.Main();
  EXPECT_FALSE(connector.connecting());
}

TEST_F(StartupTest, GoesDownInOrderOnceWhateverFails) {
  for (const bool fails : {true, false}) {
    profile.fails = false;
    startup.Main();
    Connect();
    (void)profile.TakeLog();
    profile.fails = fails;
    startup.Shutdown();
    EXPECT_FALSE(poll_timer.enabled || second_timer.enabled || port.Connected());
  }
  EXPECT_EQ(profile.TakeLog(),
            (test::Strings{"write /Position", "write /Temp", "write /Left", "write /Top", "no utility"}));
  EXPECT_EQ(profile.At("Left") + " " + profile.At("Top"), "33 44");
  startup.Shutdown();
  EXPECT_TRUE(profile.log.empty());
}

}  // namespace
}  // namespace orvalis
