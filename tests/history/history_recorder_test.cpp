#include "history/history_recorder.h"

#include "base/text.h"
#include "tests/support/fake_history_store.h"
#include "tests/support/link_fixture.h"

namespace orvalis {
namespace {

class HistoryRecorderTest : public test::LinkFixture {
 protected:
  HistoryRecorderTest() {
    poll.Listen([this](const SensorFrame& frame) { recorder.Note(weather, frame); });
  }
  [[nodiscard]] std::size_t Stored() const {
    std::size_t count = 0;
    for (const auto& batch : history.batches) count += batch.samples.size();
    return count;
  }

  test::FakeHistoryStore history;
  test::Strings reports;
  HistoryRecorder recorder{{.loop = loop, .clock = clock, .store = history, .report = [this](const std::string& text) {
                              reports.push_back(text);
                            }}};
};

TEST_F(HistoryRecorderTest, StoresOnceAMinuteAndAtTheEnd) {
  Connect(61);
  ASSERT_EQ(history.batches.size(), 0u);  // the first reading came a moment after the first tick
  Tick(2);
  ASSERT_EQ(history.batches.size(), 1u);
  EXPECT_EQ(history.batches[0].samples.size(), 31u);
  Tick(20);
  Silence(60);  // what was measured before is stored all the same
  ASSERT_EQ(history.batches.size(), 2u);
  EXPECT_EQ(Stored(), 41u);
  recorder.Flush();
  EXPECT_EQ(history.batches.size(), 2u);
  Measure("", 10);
  recorder.Flush();
  EXPECT_EQ(history.batches.size(), 3u);
  EXPECT_EQ(history.batches[2].follows, history.batches[1].samples.back().time);
}

TEST_F(HistoryRecorderTest, WhatTheStoreDoesNotTakeIsKeptAndSaidOnce) {
  history.fails = true;
  recorder.LoadSoon();
  Connect(600);
  EXPECT_EQ(reports, test::Strings{"cannot store the history: disk full"});
  EXPECT_EQ(recorder.Shown().size(), 1u);  // all at the fake clock's one moment
  history.fails = false;
  Tick(60);
  EXPECT_GT(Stored(), 295u);
  EXPECT_EQ(reports.back(), "the history is being stored again");
  EXPECT_EQ(history.loaded_to - history.loaded_from, 48 * History::kHourMs);  // read after all
}

TEST_F(HistoryRecorderTest, EveryChangeOfTheVerdictIsARowThatLastsUntilTheNext) {
  const std::int64_t noon = UtcMilliseconds(clock.now);
  Observation now;
  const auto look = [&](std::int64_t second, std::initializer_list<Reason> reasons) {
    now.time = noon + 1000 * second;
    now.verdict.safe = reasons.size() == 0;
    now.verdict.reasons = {};
    for (const Reason reason : reasons) now.verdict.reasons.Add(reason);
    recorder.NoteVerdict(now);
  };
  const auto stored = [&] {
    recorder.Flush();
    std::string rows;
    for (const RecordedVerdict& row : history.batches.back().verdicts) {
      rows += std::to_string(row.first - noon) + "-" + std::to_string(row.last - noon) + " " +
              (row.safe ? "safe" : row.reasons) + ", ";
    }
    return rows;
  };
  look(0, {Reason::kNoReading});
  look(0, {Reason::kHold});  // in the same millisecond
  look(9, {Reason::kHold});
  look(10, {});
  EXPECT_EQ(stored(), "0-1 no_reading, 1-10000 hold, 10000-10000 safe, ");
  const std::size_t batches = history.batches.size();
  recorder.Flush();
  EXPECT_EQ(history.batches.size(), batches);  // nothing is new
  look(15, {});
  look(14, {Reason::kRain, Reason::kUnitAlarm});  // the clock was put right by a second
  EXPECT_EQ(stored(), "10000-15000 safe, 15000-15000 unit_alarm rain, ");
  look(16, {Reason::kRain, Reason::kUnitAlarm});
  look(3600, {Reason::kRain, Reason::kUnitAlarm});  // asleep for an hour
  EXPECT_EQ(stored(), "15000-16000 unit_alarm rain, 3600000-3600000 unit_alarm rain, ");
  EXPECT_EQ(VerdictDuring(recorder.View(), {.from = noon + 60'000, .to = noon + 3'500'000}).Word(), "");

  // A store that is full for a while gets all of them, in one go.
  history.fails = true;
  for (int i = 0; i < 10'000; ++i) {
    look(3601 + i, {i % 2 == 0 ? Reason::kWind : Reason::kClouds});
    if (i % 100 == 0) loop.Advance(HistoryRecorder::kBatchInterval);
  }
  history.fails = false;
  loop.Advance(HistoryRecorder::kBatchInterval);
  EXPECT_EQ(history.batches.back().verdicts.size(), 10'001u);
  EXPECT_EQ(history.batches.back().verdicts.back().reasons, "clouds");
}

TEST_F(HistoryRecorderTest, BeginsToRememberWhenSomebodyAsks) {
  HistoryRecorder headless(
      {.loop = loop, .clock = clock, .store = history, .report = [](const std::string&) {}, .remember = false});
  Connect(20);
  headless.Note(weather, SensorFrame());
  EXPECT_EQ(headless.Shown().size(), 0u);
  headless.Remember();
  // What was not stored yet is, so that it is read back with the rest.
  EXPECT_EQ(Stored(), 1u);
  EXPECT_EQ(history.loaded_to - history.loaded_from, 48 * History::kHourMs);
  headless.Note(weather, SensorFrame());
  EXPECT_EQ(headless.Shown().size(), 1u);
}

TEST_F(HistoryRecorderTest, MadeUpValuesAreNeitherStoredNorMixedWithRealOnes) {
  int replaced = 0;
  recorder.OnReplaced([&] { ++replaced; });
  Connect(10);
  const auto real = recorder.Shown().revision();
  settings.DemoMode = 1;
  Tick(200);
  EXPECT_TRUE(recorder.demo_shown());
  EXPECT_EQ(recorder.Shown().Nearest(UtcMilliseconds(clock.now), 0)->lowest[Quantity::kSky], 10);  // the wet line
  settings.DemoMode = 0;
  Tick(4);
  EXPECT_FALSE(recorder.demo_shown());
  EXPECT_EQ(replaced, 2);
  EXPECT_LE(recorder.Shown().revision(), real + 2);
  for (const auto& batch : history.batches) {
    for (const Sample& sample : batch.samples) EXPECT_EQ(sample.values[Quantity::kSky], -20);
  }
}

TEST_F(HistoryRecorderTest, OldRowsGoAfterAnHourAndThenHourlyUnlessTheClockWasSet) {
  const auto pass = [&](int seconds) {
    for (int i = 0; i < seconds; ++i) {
      ++clock.now.second;  // beyond 59, which the sum in milliseconds does not mind
      Tick(1);
    }
  };
  Connect();
  pass(3500);
  EXPECT_TRUE(history.forgotten.empty());
  pass(2 * 3600);
  ASSERT_EQ(history.forgotten.size(), 2u);
  EXPECT_EQ(history.forgotten[0].first - history.forgotten[0].second, History::kHourMs * 24 * 398);
  const std::int64_t kept = UtcMilliseconds(clock.now) - history.forgotten[1].first;
  EXPECT_TRUE(kept >= 48 * History::kHourMs && kept < 49 * History::kHourMs) << kept;
  for (const int years : {2, -2}) {
    const std::size_t count = history.forgotten.size();
    clock.now.year += years;
    pass(3600);
    EXPECT_EQ(history.forgotten.size(), count) << "set by " << years << " years";
    pass(3600);
    EXPECT_EQ(history.forgotten.size(), count + 1) << "right for an hour";
  }
}

TEST_F(HistoryRecorderTest, RemembersWhatIsKnownAndWhatIsHeld) {
  // Sky, clear sky, ambient, dew point, wind, gust, humidity, rain, light; those held over from earlier readings in
  // brackets.
  const auto last = [&] {
    const Span span = *recorder.Shown().Nearest(UtcMilliseconds(clock.now), 0);
    std::string text;
    for (std::size_t i = 0; i < kQuantities; ++i) {
      const auto quantity = static_cast<Quantity>(i);
      const std::string value = FormatFixed(span.lowest[quantity], 1);
      text += span.held.Has(quantity) ? "(" + value + ") " : value + " ";
    }
    return text + (span.conditions.bits() == 1 ? "clear" : "");
  };
  Connect(10);
  EXPECT_EQ(last(), "-20.0 -20.2 5.0 -4.9 18.0 18.0 48.9 120.0 1000.0 clear");
  Measure("HUM=0999", 4);
  EXPECT_EQ(last(), "-20.0 nan 5.0 nan 18.0 18.0 nan 120.0 1000.0 clear");
  Measure("R=01x0", 4);
  EXPECT_EQ(last(), "-20.0 -20.2 5.0 -4.9 18.0 18.0 48.9 nan 1000.0 clear");
  Measure("TA=+19999", 4);
  EXPECT_EQ(last(), "-20.0 (-20.2) (5.0) (-4.9) 18.0 18.0 (48.9) 120.0 1000.0 clear");
  Tick(20);
  EXPECT_EQ(last(), "-20.0 nan nan nan 18.0 18.0 nan 120.0 1000.0 ") << "the sky word compares with the air";
}

}  // namespace
}  // namespace orvalis
