#include "history/history_recorder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "base/run_time_error.h"
#include "tests/support/link_fixture.h"

namespace orvalis {
namespace {

using std::chrono::seconds;

class FakeStore : public HistoryStore {
 public:
  Part Load(std::int64_t /*spans_from*/, std::int64_t samples_from, std::int64_t to) override {
    Fail();
    loaded_from = samples_from;
    loaded_to = to;
    return {};
  }
  void Write(const Batch& batch) override {
    Fail();
    batches.push_back(batch);
  }
  void Forget(std::int64_t samples_before, std::int64_t spans_before) override {
    Fail();
    forgotten.emplace_back(samples_before, spans_before);
  }
  void Fail() const {
    if (fails) throw RunTimeError(RunTimeError::kPathFileAccess, "cannot store the history: disk full");
  }

  bool fails = false;
  std::int64_t loaded_from = 0;
  std::int64_t loaded_to = 0;
  std::vector<Batch> batches;
  std::vector<std::pair<std::int64_t, std::int64_t>> forgotten;
};

class HistoryRecorderTest : public test::LinkFixture {
 protected:
  HistoryRecorderTest() {
    poll.Listen([this](const SensorFrame& frame) { recorder.Note(weather, frame); });
  }
  [[nodiscard]] std::size_t Stored() const {
    std::size_t count = 0;
    for (const auto& batch : store.batches) count += batch.samples.size();
    return count;
  }

  FakeStore store;
  std::vector<std::string> reports;
  HistoryRecorder recorder{{.loop = loop, .clock = clock, .store = store, .report = [this](const std::string& text) {
                              reports.push_back(text);
                            }}};
};

TEST_F(HistoryRecorderTest, StoresOnceAMinuteAndAtTheEnd) {
  Connect();
  Tick(61);
  ASSERT_EQ(store.batches.size(), 0u);  // the first reading came a moment after the first tick
  Tick(2);
  ASSERT_EQ(store.batches.size(), 1u);
  EXPECT_EQ(store.batches[0].samples.size(), 31u);
  Tick(20);
  port.silent = true;  // what was measured before is stored all the same
  Tick(60);
  ASSERT_EQ(store.batches.size(), 2u);
  EXPECT_EQ(Stored(), 41u);
  recorder.Flush();
  EXPECT_EQ(store.batches.size(), 2u);
  port.silent = false;
  Tick(10);
  recorder.Flush();
  EXPECT_EQ(store.batches.size(), 3u);
  EXPECT_EQ(store.batches[2].follows, store.batches[1].samples.back().time);
}

TEST_F(HistoryRecorderTest, WhatTheStoreDoesNotTakeIsKeptAndSaidOnce) {
  store.fails = true;
  recorder.LoadSoon();
  Connect();
  Tick(600);
  EXPECT_EQ(reports, std::vector<std::string>{"cannot store the history: disk full"});
  EXPECT_EQ(recorder.Shown().size(), 1u);  // all at the fake clock's one moment
  store.fails = false;
  Tick(60);
  EXPECT_GT(Stored(), 295u);
  EXPECT_EQ(reports.back(), "the history is stored again");
  EXPECT_EQ(store.loaded_to - store.loaded_from, 48 * History::kHourMs);  // read after all
}

TEST_F(HistoryRecorderTest, MadeUpValuesAreNeitherStoredNorMixedWithRealOnes) {
  int replaced = 0;
  recorder.OnReplaced([&] { ++replaced; });
  Connect();
  Tick(10);
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
  for (const auto& batch : store.batches) {
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
  EXPECT_TRUE(store.forgotten.empty());
  pass(2 * 3600);
  ASSERT_EQ(store.forgotten.size(), 2u);
  EXPECT_EQ(store.forgotten[0].first - store.forgotten[0].second, 398 * 24 * History::kHourMs);
  const std::int64_t kept = UtcMilliseconds(clock.now) - store.forgotten[1].first;
  EXPECT_TRUE(kept >= 48 * History::kHourMs && kept < 49 * History::kHourMs) << kept;
  for (const int years : {2, -2}) {
    const std::size_t count = store.forgotten.size();
    clock.now.year += years;
    pass(3600);
    EXPECT_EQ(store.forgotten.size(), count) << "set by " << years << " years";
    pass(3600);
    EXPECT_EQ(store.forgotten.size(), count + 1) << "right for an hour";
  }
}

// Each row: what the unit sends, which quantities are known then, and which are held over from earlier readings.
TEST_F(HistoryRecorderTest, RemembersWhatIsKnownAndWhatIsHeld) {
  const std::string good = test::LiveFrame();
  std::string no_air = good;
  no_air.replace(58, 6, "+19999");
  std::string faulty_humidity = good;
  faulty_humidity.replace(4, 4, "0999");
  Connect();
  const auto last = [&] { return *recorder.Shown().Nearest(UtcMilliseconds(clock.now), 0); };
  Tick(10);
  EXPECT_TRUE(last().lowest.Knows(Quantity::kDewPoint));
  EXPECT_EQ(last().held.bits(), 0);
  EXPECT_TRUE(last().conditions.Has(Condition::kClear));
  EXPECT_FALSE(last().conditions.Has(Condition::kUnsafe));
  port.frame = faulty_humidity;
  Tick(4);
  EXPECT_FALSE(last().lowest.Knows(Quantity::kHumidity));
  EXPECT_FALSE(last().lowest.Knows(Quantity::kClearSky));
  EXPECT_TRUE(last().lowest.Knows(Quantity::kAmbient));
  port.frame = no_air;
  Tick(4);
  EXPECT_TRUE(last().held.Has(Quantity::kAmbient));
  EXPECT_FALSE(last().held.Has(Quantity::kSky));
  EXPECT_EQ(last().lowest[Quantity::kAmbient], 5);
  Tick(20);
  EXPECT_FALSE(last().lowest.Knows(Quantity::kAmbient));
  EXPECT_TRUE(last().lowest.Knows(Quantity::kSky));
  EXPECT_FALSE(last().conditions.Has(Condition::kClear));  // the sky word compares with the air
}

}  // namespace
}  // namespace orvalis
