#include "app/observer.h"

#include <algorithm>
#include <map>
#include <string>

#include "app/verdict_records.h"
#include "tests/support/log_fixture.h"
#include "verdict/explanation.h"

namespace orvalis {
namespace {

class ObserverTest : public test::LogFixture {
 protected:
  ObserverTest() {
    settings.g_sFullLogPath = folder.string();
    observer.Listen([this](const Observation& now, const Observer::News& news) {
      records.Note(now, news);
      if (news.reasons) changes.push_back(ReasonNames(now.verdict));
    });
    settings.WindSpeedCloseD = 20;
  }
  [[nodiscard]] std::ptrdiff_t EventsOfVerdicts() const {
    return std::ranges::count_if(events.events(), [](const Event& e) { return e.text.find("SAFE") < 3; });
  }

  VerdictLog log{[this](const std::string& text) { events.Record(text); }};
  VerdictRecords records{{.clock = clock, .settings = settings, .events = events, .log = log}};
  test::Strings changes;
};

TEST_F(ObserverTest, AConnectionIsSafeAfterItsHold) {
  observer.Update();
  Connect(16);
  EXPECT_EQ(changes, (test::Strings{"no_connection", "no_reading, settings_pending", "hold", ""}));
  Silence(12);
  EXPECT_EQ(changes.back(), "stale");
  EXPECT_NE(Content(VerdictLog::kFileName).find("2026-11-21T21:04:05.000+00:00 unsafe stale: no reading for 10 s |"),
            std::string::npos)
      << Content(VerdictLog::kFileName);
}

TEST_F(ObserverTest, TellsWhatEndsByItselfAtThatMoment) {
  std::map<std::string, std::int64_t> told;  // when each was
  observer.Listen([&](const Observation& now, const Observer::News& news) {
    if (news.reading) told["reading"] = loop.TickCount();
    if (news.reasons) told[ReasonNames(now.verdict)] = loop.TickCount();
  });
  settings.SafeHoldSeconds = 5;
  Connect();
  // Nobody asks in between.
  for (int i = 0; i < 24; ++i) {
    port.silent = told.contains("");
    poll.Poll();
    loop.Advance(std::chrono::milliseconds(i % 2 == 0 ? 1 : 1'399));
  }
  EXPECT_EQ(told[""] - told["hold"], 5'000);
  EXPECT_EQ(told["stale"] - told["reading"], 10'000);
}

TEST_F(ObserverTest, AGustyNightIsALineEachAndAnEventOnce) {
  settings.VerdictWind = 1;
  Connect(16);
  changes.clear();
  for (int i = 0; i < 10; ++i) {
    Measure("WND=0040", 4);
    EXPECT_EQ(changes.back(), "wind");
    Measure("WND=0005", 4);
  }
  EXPECT_EQ(changes.size(), 20u);
  EXPECT_EQ(EventsOfVerdicts(), 5) << "the three of the connection, the wind and its hold";
}

TEST_F(ObserverTest, ForcedStaysOverARestartAndATestDoesNot) {
  Connect(16);
  observer.TestUnsafe();
  EXPECT_EQ(changes.back(), "forced");
  Tick(29);
  EXPECT_EQ(changes.back(), "forced");
  Tick(13);
  EXPECT_EQ(changes.back(), "");
  observer.ForceUnsafe(true);
  EXPECT_EQ(changes.back(), "forced");
  EXPECT_EQ(store.LoadSettings().ForceUnsafe, 1);
  observer.ForceUnsafe(false);
  EXPECT_EQ(store.LoadSettings().ForceUnsafe, 0);
  observer.Stop();
  EXPECT_EQ(changes.back(), "stopping");
}

}  // namespace
}  // namespace orvalis
