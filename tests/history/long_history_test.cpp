#include "history/long_history.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

#include "history/merging.h"
#include "tests/support/fake_event_loop.h"
#include "tests/support/fake_history_store.h"

namespace orvalis {
namespace {

constexpr std::int64_t kHour = History::kHourMs;
constexpr std::int64_t kDay = 24 * kHour;
constexpr std::int64_t kNow = 20'000 * kDay;

Span SpanAt(std::int64_t first, float lowest, float highest) {
  Span span{.first = first, .last = first + 58'000, .lowest = {}, .highest = {}, .held = {}, .conditions = {}};
  span.lowest[Quantity::kWind] = lowest;
  span.highest[Quantity::kWind] = highest;
  return span;
}

TEST(Merging, KeepsExtremesConditionsAndWhatIsKnownAtAll) {
  SpanMerger merger(kHour);
  Span unknown = SpanAt(kNow + 60'000, NAN, NAN);
  unknown.conditions.Put(Condition::kRain);
  for (const Span& span : {SpanAt(kNow, 3, 4), unknown, SpanAt(kNow + 120'000, 1, 9), SpanAt(kNow + kHour, 5, 5)}) {
    merger.Add(span);
  }
  const std::vector<Span> columns = merger.Take();
  ASSERT_EQ(columns.size(), 2U);
  EXPECT_EQ(columns[0].lowest[Quantity::kWind], 1);
  EXPECT_EQ(columns[0].highest[Quantity::kWind], 9);
  EXPECT_EQ(columns[0].last, kNow + 178'000);
  EXPECT_TRUE(columns[0].conditions.Has(Condition::kRain));
  EXPECT_FALSE(columns[0].lowest.Knows(Quantity::kSky));
}

TEST(Merging, LeavesASafeAndAnUnsafeVerdictOfAColumn) {
  VerdictMerger merger(kHour);
  const auto add = [&](std::int64_t from, std::int64_t to, const char* reasons,
                       ReadingSource source = ReadingSource::kUnit) {
    merger.Add({.first = kNow + from * 60'000,
                .last = kNow + to * 60'000,
                .safe = *reasons == 0,
                .source = source,
                .reasons = reasons,
                .explanation = "x"});
  };
  add(0, 10, "");
  add(10, 20, "wind clouds");
  add(20, 30, "");
  add(30, 40, "clouds rain");
  add(40, 50, "", ReadingSource::kDemo);
  add(50, 200, "hold");  // beyond the column
  std::string text;
  for (const RecordedVerdict& v : merger.Take()) {
    text += std::to_string((v.first - kNow) / 60'000) + "-" + std::to_string((v.last - kNow) / 60'000) + " " +
            (v.safe ? "safe" : v.reasons) + " " + v.explanation + ", ";
  }
  EXPECT_EQ(text, "0-20 safe , 20-40 wind clouds rain , 50-200 hold x, ");
}

class LongHistoryTest : public testing::Test {
 protected:
  LongHistoryTest() {
    for (std::int64_t time = kNow - 100 * kDay; time < kNow; time += kHour / 4)
      store.kept_spans.push_back(SpanAt(time, 1, 2));
    recent.Add({.time = kNow, .values = {}, .held = {}, .conditions = {}});
    history.Refresh();
  }
  /// How many spans a picture of 1000 columns of the last so many hours rests on.
  std::size_t Size(std::int64_t hours) {
    return history.ViewOf({.from = kNow - hours * kHour, .to = kNow}, 1000).history.size();
  }

  test::FakeEventLoop loop;
  test::FakeHistoryStore store;
  History recent;
  VerdictHistory verdicts;
  int changes = 0;
  LongHistory history{{.recent = [this] { return HistoryView{.history = recent, .verdicts = verdicts}; },
                       .now = [] { return kNow; },
                       .changed = [this] { ++changes; }},
                      {.loop = loop, .store = store}};
};

TEST_F(LongHistoryTest, ReadsWhatIsOlderALittleAtATimeAndNoMoreThanItNeeds) {
  EXPECT_EQ(history.Extent()->from, kNow - 100 * kDay);
  EXPECT_EQ(Size(48), 1U);  // memory has it
  EXPECT_FALSE(history.reading());
  EXPECT_EQ(Size(2400), 1U);
  loop.Advance(std::chrono::milliseconds(41));
  EXPECT_TRUE(history.reading());
  loop.Advance(std::chrono::seconds(1));
  // 9600 quarters of an hour, in columns of 2.4 hours, halved.
  EXPECT_EQ(Size(2400), 2000U);
  EXPECT_EQ(changes, 1);
  EXPECT_EQ(store.most_spans, 2000U);

  EXPECT_EQ(Size(2000), 2000U);  // fine enough
  EXPECT_FALSE(history.reading());
  EXPECT_EQ(Size(240), 2000U);  // until the finer ones are there, with as many before
  loop.Advance(std::chrono::seconds(1));
  EXPECT_EQ(Size(240), 4U * 480);
  EXPECT_EQ(Size(12), 1U);
}

TEST_F(LongHistoryTest, SaysOnceThatTheStoreCannotBeReadAndTriesAgainWhenAsked) {
  store.fails = true;
  for (int i = 0; i < 5; ++i) {
    EXPECT_EQ(Size(2400), 1U);
    loop.Advance(std::chrono::seconds(1));
  }
  EXPECT_EQ(changes, 1);
  EXPECT_FALSE(history.failure().empty());
  store.fails = false;
  history.Refresh();
  EXPECT_EQ(Size(2400), 1U);
  loop.Advance(std::chrono::seconds(1));
  EXPECT_EQ(Size(2400), 2000U);
}

}  // namespace
}  // namespace orvalis
