// The assistant of the first start: when it is due, what it proposes and stores, and its search for the unit.

#include "app/assistant_choices.h"
#include "app/unit_search.h"
#include "tests/support/link_fixture.h"

namespace orvalis {
namespace {

using enum UnitSearch::Finding;

class Search : public testing::Test {
 protected:
  /// What is connected to the port that is opened next.
  void Plug() {
    const UnitSearch::Result* now = search.trying();
    if (now == nullptr) return;
    port.silent = now->port == "silent";
    port.greeting = now->port == "weather station" ? "WIMWV,214.8,R" : now->port == "modem" ? "OK" : "W";
    port.open_failure.reset();
    if (now->port == "denied") port.open_failure.emplace(RunTimeError::kPermissionDenied, "join dialout");
  }
  [[nodiscard]] std::vector<UnitSearch::Finding> Findings() const {
    std::vector<UnitSearch::Finding> findings;
    for (const auto& result : search.results()) findings.push_back(result.finding);
    return findings;
  }

  test::FakeEventLoop loop;
  test::FakeSerialPort port{loop};
  UnitSearch search{{.port = port,
                     .loop = loop,
                     .is_ours = [](const std::string& name) { return name == "ours"; },
                     .changed = [this] { Plug(); }}};
};

TEST_F(Search, FindsTheUnitByItsGreetingAloneAndLeavesLaterPortsAlone) {
  search.Start({"silent", "weather station", "ours", "denied", "modem", "unit", "mount"});
  loop.Advance(std::chrono::seconds(20));
  EXPECT_EQ(Findings(), (std::vector{kSilent, kOther, kOurs, kNotOpened, kOther, kUnit, kWaiting}));
  EXPECT_EQ(search.results()[3].detail.English(), "join dialout");
  EXPECT_EQ(port.sent, "#\x06#\x06#\x06#\x06");
  EXPECT_FALSE(port.Connected());
  EXPECT_FALSE(search.running());
}

TEST_F(Search, StopsAtOnceAndGivesItsPortToTheProgramsOwnConnection) {
  search.Start({"silent", "silent", "unit"});
  loop.Advance(std::chrono::seconds(1));
  search.GiveWay();
  EXPECT_EQ(Findings(), (std::vector{kOurs, kTrying, kWaiting}));
  search.Stop();
  EXPECT_FALSE(port.Connected());
  port.calls.clear();
  loop.Advance(std::chrono::seconds(20));
  EXPECT_EQ(port.calls, std::vector<std::string>());
  EXPECT_EQ(Findings(), (std::vector{kOurs, kWaiting, kWaiting}));
}

/// One that may have a notice of a loss.
struct KeptProfile : test::MemoryProfile {
  bool KeepSafe(const StoreRules& /*rules*/) override { return true; }
};

TEST(Assistant, IsDueOnlyWhereThereWereNoSettings) {
  struct Case {
    bool used;  ///< by an earlier start
    const char* stamp;
    const char* loss;
    bool offered;
    int due;
  };
  for (const Case& c : {Case{false, "", "", true, 1}, Case{false, "", "", false, 0}, Case{true, "2.18", "", true, 0},
                        Case{true, "2.17", "", true, 0}, Case{false, "", "The settings were destroyed", true, 0}}) {
    KeptProfile profile;
    SettingsStore store(profile, "/opt", {});
    if (c.used) store.EnsureLayout();
    profile.values[{"", "RegVer"}] = c.stamp;
    profile.values[{"", "SettingsLost"}] = c.loss;
    if (c.offered) store.OfferAssistant();
    EXPECT_EQ(store.LoadSettings().Assistant, c.due) << c.stamp << c.loss << c.offered;
  }
}

struct Chosen : test::LinkWorld, testing::Test {
  Chosen() { settings.Assistant = 1; }
};

TEST_F(Chosen, IsStoredAllAtOnceOrNotAtAll) {
  AssistantChoices choices(store, settings);
  choices.Propose(UsualUnits("SE"));
  choices.port = "/dev/ttyUSB7";
  profile.fails = true;
  EXPECT_THROW(choices.Store(), RunTimeError);
  EXPECT_TRUE(settings.AlwaysOnTop);
  EXPECT_EQ(settings.Assistant, 1);
  profile.fails = false;
  settings.VerdictWind = 1;  // in the setup dialog, meanwhile
  EXPECT_TRUE(choices.Follow());
  choices.Store();
  EXPECT_EQ(profile.At("COM Port") + profile.At("WindUnit") + profile.At("VerdictWind") + profile.At("AutoConnect") +
                profile.At("Assistant") + profile.At("AlwaysOnTop"),
            "/dev/ttyUSB72110False");
  EXPECT_FALSE(settings.AlwaysOnTop);
}

TEST_F(Chosen, SkippedOnlyTheMarkIsWritten) {
  AssistantChoices choices(store, settings);
  choices.Propose(UsualUnits("US"));
  choices.Skip();
  EXPECT_EQ(profile.log, std::vector<std::string>{"write /Assistant"});
  EXPECT_TRUE(settings.AlwaysOnTop);
}

TEST_F(Chosen, WithoutAPortNothingConnectsAtTheNextStart) {
  store.WriteText("COM Port", "");
  AssistantChoices choices(store, settings);
  choices.Propose(UsualUnits(""));
  choices.Store();
  EXPECT_EQ(profile.At("AutoConnect") + profile.At("COM Port"), "0");
  choices.port = "/dev/ttyUSB7";
  store.WriteText("COM Port", "2");  // by a link that needed a name
  EXPECT_FALSE(choices.Follow());
  EXPECT_EQ(choices.port, "/dev/ttyUSB7");
}

TEST(UsualUnits, AreThoseOfWeatherReports) {
  const auto names = [](std::string_view territory) {
    const DisplayUnits units = UsualUnits(territory);
    return std::string(units.TemperatureName()) + " " + std::string(units.WindName());
  };
  EXPECT_EQ(names("US"), "°F mph");
  EXPECT_EQ(names("GB"), "°C mph");
  EXPECT_EQ(names("DE"), "°C km/h");
  EXPECT_EQ(names("SE"), "°C m/s");
  for (const std::string_view none : {"", "S", "R ", "001"}) EXPECT_EQ(names(none), "°C km/h") << none;
}

}  // namespace
}  // namespace orvalis
