#include "history/history.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "history/condition_bands.h"
#include "history/curve.h"
#include "history/history_csv.h"
#include "history/trend.h"
#include "history/verdict_bands.h"

namespace orvalis {
namespace {

constexpr std::int64_t kSecond = 1000;
constexpr std::int64_t kHour = 3600 * kSecond;
constexpr std::int64_t kNoon = 1'795'262'400'000;  // 2026-11-21 12:00 UTC, by date(1)
constexpr TimeRange kEver{.from = kNoon - 1000 * kHour, .to = kNoon + 1000 * kHour};

Sample Reading(std::int64_t time, float wind = 1, SmallSet<Condition> conditions = {}) {
  Sample sample{.time = time, .values = {}, .held = {}, .conditions = conditions};
  sample.values[Quantity::kWind] = wind;
  return sample;
}

SmallSet<Condition> Conditions(std::initializer_list<Condition> members) {
  SmallSet<Condition> set;
  for (const Condition member : members) set.Put(member);
  return set;
}

std::vector<Span> All(const History& history) {
  std::vector<Span> spans;
  history.Visit(kEver, [&](const Span& span) { spans.push_back(span); });
  return spans;
}

void Fill(History& history, std::int64_t from, std::int64_t to, float wind = 1) {
  for (std::int64_t time = from; time <= to; time += 2 * kSecond) history.Add(Reading(time, wind));
}

/// In seconds from noon.
RecordedVerdict Verdict(std::int64_t first, std::int64_t last, bool safe, const char* reasons = "") {
  return {.first = kNoon + first * kSecond,
          .last = kNoon + last * kSecond,
          .safe = safe,
          .source = ReadingSource::kUnit,
          .reasons = reasons,
          .explanation = safe ? "" : "rain 412 counts, limit 350; \"wet\""};
}

bool IsInOrder(const std::vector<Span>& spans) {
  return std::is_sorted(spans.begin(), spans.end(), [](const Span& a, const Span& b) { return a.last < b.first; });
}

TEST(History, KeepsTwoDaysInLittleMemoryAndEveryGust) {
  History history;
  const std::int64_t gust_at = kNoon - 40 * kHour;
  for (std::int64_t time = kNoon - 100 * kHour; time <= kNoon; time += 2 * kSecond) {
    history.Add(Reading(time, time == gust_at ? 99 : 1));
  }
  // A sample every two seconds of a day, and a span a minute of the day before.
  EXPECT_NEAR(static_cast<double>(history.size()), 43'200 + 1'440, 5);
  EXPECT_NEAR(static_cast<double>(history.Extent()->from), kNoon - 48 * kHour, 60 * kSecond);
  const auto spans = All(history);
  EXPECT_TRUE(IsInOrder(spans));
  EXPECT_EQ(std::count_if(spans.begin(), spans.end(), [](const Span& s) { return s.highest[Quantity::kWind] == 99; }),
            1);
  const auto gust = history.Nearest(gust_at, 0);
  ASSERT_TRUE(gust);
  EXPECT_EQ(gust->lowest[Quantity::kWind], 1);
  EXPECT_EQ(gust->highest[Quantity::kWind], 99);
}

TEST(History, ThinningKeepsGapsConditionsAndWhatIsNotKnownApart) {
  History history;
  const std::int64_t old = kNoon - 30 * kHour;
  history.Add(Reading(old));
  history.Add(Reading(old + 10 * kSecond));
  history.Add(Reading(old + 21 * kSecond));  // a gap of more than ten seconds
  history.Add(Reading(old + 23 * kSecond, 1, Conditions({Condition::kUnsafe})));
  history.Add(Reading(old + 25 * kSecond, NAN));
  history.Add(Reading(kNoon));
  const auto spans = All(history);
  ASSERT_EQ(spans.size(), 5u);
  EXPECT_EQ(spans[0].last, old + 10 * kSecond);
  EXPECT_TRUE(spans[2].conditions.Has(Condition::kUnsafe));
  EXPECT_FALSE(spans[3].lowest.Knows(Quantity::kWind));
}

// Each row: by how much the clock jumps between two hours, from when samples are shown afterwards, and how many.
TEST(History, StaysInOrderWhateverTheClockDoes) {
  const std::tuple<const char*, std::int64_t, std::int64_t, std::size_t> cases[] = {
      {"summer time is no jump", 0, -kHour, 3601},
      {"set back by three seconds: one sample gives way", -3 * kSecond, -kHour, 3600},
      {"set back by half an hour: the later ones stand", -kHour / 2, -kHour, 2701},
      {"set back by two days", -48 * kHour, -48 * kHour, 1800},
      {"set forward by ten hours", 10 * kHour, -kHour, 3601},
      {"set forward by a month", 720 * kHour, 720 * kHour, 1800},
  };
  for (const auto& [name, jump, from, samples] : cases) {
    SCOPED_TRACE(name);
    History history;
    Fill(history, kNoon - kHour, kNoon, 1);
    const std::int64_t again = kNoon + jump + 2 * kSecond;
    Fill(history, again, again + kHour - 2 * kSecond, 2);
    const auto spans = All(history);
    EXPECT_TRUE(IsInOrder(spans));
    EXPECT_EQ(history.Extent()->to, again + kHour - 2 * kSecond);
    EXPECT_NEAR(static_cast<double>(history.Extent()->from), static_cast<double>(kNoon + from), 2 * kSecond);
    EXPECT_EQ(spans.size(), samples);
    for (const Span& span : spans) {
      EXPECT_TRUE(span.first < again || span.lowest[Quantity::kWind] == 2);
    }
  }
}

TEST(History, AMachineThatStartsWithItsClockBehindLosesNothing) {
  std::vector<Sample> samples;
  for (std::int64_t time = kNoon - kHour; time <= kNoon; time += 2 * kSecond) samples.push_back(Reading(time));
  History history;
  history.Load({}, samples, kNoon - kHour / 2);
  EXPECT_EQ(history.Extent()->to, kNoon - kHour / 2);
  Fill(history, kNoon - kHour / 2 + kSecond, kNoon - kHour / 2 + 31 * kSecond, 2);
  Fill(history, kNoon + 60 * kSecond, kNoon + 90 * kSecond, 3);  // the right time came over the network
  EXPECT_EQ(history.Extent()->from, kNoon - kHour);
  EXPECT_EQ(history.Nearest(kNoon, 0)->lowest[Quantity::kWind], 1);
  EXPECT_EQ(history.Nearest(kNoon - kHour / 2 + 15 * kSecond, 0)->lowest[Quantity::kWind], 2);
}

TEST(Curve, ShowsEveryGustAndGapThatIsWideEnoughToBeSeen) {
  History history;
  Fill(history, kNoon - 10 * kHour, kNoon - 5 * kHour);
  history.Add(Reading(kNoon - 5 * kHour + 2 * kSecond, 77));
  Fill(history, kNoon - 5 * kHour + 4 * kSecond, kNoon - 2 * kHour);
  Fill(history, kNoon - 2 * kHour + 30 * kSecond, kNoon - kHour);  // narrower than a column
  history.Add(Reading(kNoon - kHour / 2));                         // alone
  Fill(history, kNoon - 60 * kSecond, kNoon);
  constexpr int kColumns = 500;
  const auto points = CurvePoints(history, Quantity::kWind, {.from = kNoon - 10 * kHour, .to = kNoon}, kColumns);
  EXPECT_LE(points.size(), 4u * kColumns);
  EXPECT_TRUE(std::ranges::is_sorted(points, {}, &CurvePoint::time));
  std::string course;
  for (const CurvePoint& point : points) course += std::isnan(point.value) ? 'g' : point.value == 77 ? '^' : '.';
  EXPECT_NE(course.find('^'), std::string::npos);
  EXPECT_EQ(std::ranges::count(course, 'g'), 2);
  EXPECT_EQ(("g" + course + "g").find("g.g"), std::string::npos) << "a point without a line";
  const auto closer = CurvePoints(history, Quantity::kWind, {.from = kNoon - 3 * kHour, .to = kNoon}, 5000);
  EXPECT_EQ(std::count_if(closer.begin(), closer.end(), [](const CurvePoint& p) { return std::isnan(p.value); }), 3);
  EXPECT_LT(closer.front().time, static_cast<double>(kNoon - 3 * kHour));  // runs to the edge
  EXPECT_TRUE(CurvePoints(history, Quantity::kSky, kEver, kColumns).empty());
}

TEST(ConditionBands, LastUntilTheyAreKnownToHaveEnded) {
  History history;
  const auto unsafe = Conditions({Condition::kUnsafe, Condition::kRain});
  history.Add(Reading(kNoon));
  history.Add(Reading(kNoon + 2 * kSecond, 1, unsafe));
  history.Add(Reading(kNoon + 4 * kSecond, 1, unsafe));
  history.Add(Reading(kNoon + 6 * kSecond));
  history.Add(Reading(kNoon + 60 * kSecond, 1, unsafe));  // nothing is known afterwards
  history.Add(Reading(kNoon + 90 * kSecond, 1, unsafe));
  history.Add(Reading(kNoon + 92 * kSecond, 1, Conditions({Condition::kRain})));
  const TimeRange range{.from = kNoon, .to = kNoon + 100 * kSecond};
  const auto bands = ConditionBands(history, Condition::kUnsafe, range, 100);
  const std::vector<TimeRange> expected{{.from = kNoon + 2 * kSecond, .to = kNoon + 6 * kSecond},
                                        {.from = kNoon + 60 * kSecond, .to = kNoon + 60 * kSecond},
                                        {.from = kNoon + 90 * kSecond, .to = kNoon + 92 * kSecond}};
  EXPECT_EQ(bands, expected);
  EXPECT_TRUE(ConditionBands(history, Condition::kCloudy, range, 100).empty());
  // Too narrow to be told apart, they are one.
  EXPECT_EQ(ConditionBands(history, Condition::kUnsafe, range, 1).size(), 1u);
}

TEST(HistoryCsv, HasUnitsInItsHeaderAndLeavesBlankWhatIsNotKnown) {
  History history;
  Sample first = Reading(kNoon - 30 * kHour, 3.6F, Conditions({Condition::kClear}));
  first.values[Quantity::kAmbient] = 10.5F;
  Sample second = first;
  second.time += 2 * kSecond;
  second.values[Quantity::kAmbient] = -9.99F;
  Sample now = Reading(kNoon, 0.9F, Conditions({Condition::kCloudy, Condition::kRain, Condition::kUnsafe}));
  now.values[Quantity::kAmbient] = 8.25F;
  now.held.Put(Quantity::kAmbient);
  now.values[Quantity::kWind] = NAN;
  for (const Sample& sample : {first, second, now}) history.Add(sample);
  const std::vector<Quantity> quantities{Quantity::kAmbient, Quantity::kWind};
  // An hour east of Greenwich; only the hour of the day differs here.
  const auto local = [](std::int64_t moment) {
    const auto seconds = static_cast<int>((moment - (kNoon - 36 * kHour)) / kSecond);
    const int hour = seconds % 86400 / 3600 + 1;
    return CivilTime{2026, 11, 20 + seconds / 86400, hour, seconds % 3600 / 60, seconds % 60, 0, 60};
  };
  VerdictHistory verdicts;
  constexpr std::int64_t kBegin = -108'000;  // 30 hours before
  verdicts.Put(Verdict(kBegin, kBegin + 1, true));
  verdicts.Put(Verdict(kBegin + 1, kBegin + 2, false, "hold"));
  EXPECT_EQ(HistoryCsv({history, verdicts}, kEver, quantities, true, local),
            "time,until,source,value,verdict,unit_unsafe,sky_word,rain,held,ambient_c,wind_mph\r\n"
            "2026-11-20T07:00:00.000+01:00,2026-11-20T07:00:02.000+01:00,unit,lowest,unsafe,0,Clear,0,,-9.99,3.60\r\n"
            "2026-11-20T07:00:00.000+01:00,2026-11-20T07:00:02.000+01:00,unit,highest,unsafe,0,Clear,0,,10.50,3.60\r\n"
            "2026-11-21T13:00:00.000+01:00,2026-11-21T13:00:00.000+01:00,unit,reading,,1,Cloudy,1,ambient_c,8.25,\r\n");
  const std::string fahrenheit =
      HistoryCsv({history, verdicts, true}, {.from = kNoon, .to = kNoon}, quantities, false, local);
  EXPECT_TRUE(
      fahrenheit.ends_with("ambient_f,wind_mph\r\n2026-11-21T13:00:00.000+01:00,2026-11-21T13:00:00.000+01:00,"
                           "demo,reading,,1,Cloudy,1,ambient_f,46.85,\r\n"))
      << fahrenheit;
  verdicts.Put(Verdict(0, 1, false, "rain light"));
  EXPECT_EQ(VerdictCsv(verdicts, {.from = kNoon, .to = kNoon}, local),
            "time,until,source,verdict,reasons,explanation\r\n"
            "2026-11-21T13:00:00.000+01:00,2026-11-21T13:00:01.000+01:00,unit,unsafe,\"rain light\","
            "\"rain 412 counts, limit 350; \"\"wet\"\"\"\r\n");
}

class VerdictHistoryTest : public testing::Test {
 protected:
  /// "safe", "UNSAFE rain", one of them twice where the range holds both, "" where nothing is known.
  [[nodiscard]] std::string At(std::int64_t from, std::int64_t to, bool demo = false) const {
    const VerdictSummary during = VerdictDuring({history, verdicts, demo}, {Second(from), Second(to)});
    std::string text = during.safe ? "safe" : "";
    if (during.unsafe) text += "UNSAFE";
    for (const std::string& reason : during.reasons) text += " " + reason;
    return text;
  }
  /// The bands of the first 100 seconds after noon, "10-20 30-30", in a picture with so many columns.
  [[nodiscard]] std::string Bands(std::vector<TimeRange> VerdictBands::*kind, int columns, bool demo = false) const {
    std::string text;
    const VerdictBands bands = BandsOf({history, verdicts, demo}, {Second(0), Second(100)}, columns);
    for (const TimeRange& band : bands.*kind) {
      const auto second = [](std::int64_t time) { return std::to_string((time - kNoon) / kSecond); };
      text += (text.empty() ? "" : " ") + second(band.from) + "-" + second(band.to);
    }
    return text;
  }
  [[nodiscard]] static std::int64_t Second(std::int64_t second) { return kNoon + second * kSecond; }

  History history;
  VerdictHistory verdicts;
};

TEST_F(VerdictHistoryTest, WhereNoneWasRecordedTheUnitAloneSaysUnsafeAndNothingSaysSafe) {
  const auto unsafe = Conditions({Condition::kUnsafe});
  // Read on before, between and during the verdicts; unsafe from 6 to 12, at 36, and from 60 on, says the unit.
  for (int i = 0; i <= 80; i += 2) {
    if (i > 40 && i < 60) continue;
    history.Add(Reading(Second(i), 1, (i >= 6 && i < 12) || i == 36 || i >= 60 ? unsafe : SmallSet<Condition>()));
  }
  verdicts.Put(Verdict(10, 20, true));
  verdicts.Put(Verdict(20, 30, false, "hold"));  // the program ends, and begins with an older version
  verdicts.Put(Verdict(50, 70, false, "no_reading rain"));
  verdicts.Put(Verdict(70, 90, true));
  EXPECT_EQ(Bands(&VerdictBands::unsafe, 1000), "6-10 20-30 36-38 50-70");
  EXPECT_EQ(Bands(&VerdictBands::safe, 1000), "10-20 70-90");
  EXPECT_EQ(Bands(&VerdictBands::unsafe, 10), "6-38 50-70");  // too close to be told apart
  EXPECT_EQ(At(5, 5), "");
  EXPECT_EQ(At(20, 20), "UNSAFE hold");
  EXPECT_EQ(At(30, 30), "UNSAFE hold");
  EXPECT_EQ(At(15, 60), "safeUNSAFE hold no_reading rain");
  EXPECT_EQ(At(35, 45), "");
  EXPECT_EQ(At(92, 92), "safe");  // until the next look at it
  EXPECT_EQ(At(101, 101), "");
}

TEST_F(VerdictHistoryTest, ADemoVerdictSaysNothingGoodAboutTheSky) {
  verdicts.Put(Verdict(0, 10, false, "demo"));
  RecordedVerdict demo = Verdict(10, 20, true);
  demo.source = ReadingSource::kDemo;
  verdicts.Put(demo);
  EXPECT_EQ(Bands(&VerdictBands::unsafe, 100), "0-10");
  EXPECT_EQ(Bands(&VerdictBands::safe, 100), "");
  EXPECT_EQ(Bands(&VerdictBands::safe, 100, true), "10-20");
  EXPECT_EQ(At(12, 12) + "," + At(12, 12, true), ",safe");
}

TEST_F(VerdictHistoryTest, TheLaterArrivalWinsWhenTheClockIsSetBack) {
  verdicts.Put(Verdict(0, 40, true));
  verdicts.Put(Verdict(40, 60, false, "rain"));
  verdicts.Put(Verdict(60, 80, true));
  verdicts.Put(Verdict(30, 30, false, "wind"));
  EXPECT_EQ(Bands(&VerdictBands::safe, 100), "0-30");  // what is ahead of the clock is not shown
  EXPECT_EQ(Bands(&VerdictBands::unsafe, 100), "30-30");
  verdicts.Put(Verdict(30, 50, false, "wind"));
  verdicts.Put(Verdict(70, 90, false, "light"));  // and ended before that
  EXPECT_EQ(Bands(&VerdictBands::unsafe, 100), "30-50 70-90");
  EXPECT_EQ(Bands(&VerdictBands::safe, 100), "0-30 60-70");
  // What is read from the store comes below.
  verdicts.Load({Verdict(-50, -20, true), Verdict(-20, 75, true)}, kNoon);
  EXPECT_EQ(At(-10, -10) + " " + At(65, 65) + " " + At(80, 80), "safe safe UNSAFE light");
}

TEST_F(VerdictHistoryTest, ManyChangesAreBoundedAndTheNewestStay) {
  const int last = 2 * static_cast<int>(VerdictHistory::kMostKept);
  for (int i = 0; i < last; ++i) verdicts.Put(Verdict(i, i + 1, i % 2 == 0, i % 2 == 0 ? "" : "wind"));
  int count = 0;
  verdicts.Visit(kEver, [&](const RecordedVerdict&) { ++count; });
  EXPECT_EQ(count, 20'000);
  EXPECT_EQ(At(last, last), "UNSAFE wind");
}

TEST(History, TheTrendComparesTheEndsOfFifteenMinutesAndIgnoresNoise) {
  constexpr std::int64_t kMinute = 60 * kSecond;
  using enum Trend;
  struct Part {
    std::int64_t from;  ///< minutes before now
    std::int64_t to;
    float wind;
  };
  const std::tuple<const char*, std::vector<Part>, Trend, Trend> rows[] = {
      {"steady", {{20, 0, 5}}, kNone, kNone},
      {"within the noise", {{15, 5, 5}, {5, 0, 6.9F}}, kNone, kNone},
      {"up", {{15, 5, 5}, {5, 0, 7.1F}}, kNone, kRising},
      {"down", {{15, 5, 9}, {5, 0, 6.9F}}, kNone, kFalling},
      {"still up, by three quarters", {{15, 5, 5}, {5, 0, 6.6F}}, kRising, kRising},
      {"no longer up", {{15, 5, 5}, {5, 0, 6.4F}}, kRising, kNone},
      {"up does not hold down", {{15, 5, 9}, {5, 0, 7.4F}}, kRising, kNone},
      {"a gust", {{15, 3, 5}, {3, 2, 14}, {2, 0, 5}}, kNone, kNone},  // (4 * 5 + 14) / 5 is 6.8
      {"too short", {{12, 5, 5}, {5, 0, 9}}, kNone, kNone},
      {"a gap in the middle", {{15, 12, 5}, {4, 0, 9}}, kNone, kRising},
      {"nothing of late", {{15, 3, 5}}, kRising, kNone},
      {"what was long ago", {{60, 20, 0}, {15, 0, 5}}, kNone, kNone},
  };
  for (const auto& [what, parts, before, trend] : rows) {
    History history;
    for (const Part& part : parts) {
      for (std::int64_t t = kNoon - part.from * kMinute; t < kNoon - part.to * kMinute; t += 2 * kSecond) {
        history.Add(Reading(t, part.wind));
      }
    }
    EXPECT_EQ(TrendOf(history, Quantity::kWind, kNoon, before), trend) << what;
  }
  History held;  // old readings of a sensor that has gone say nothing
  for (std::int64_t t = kNoon - 15 * kMinute; t < kNoon; t += 2 * kSecond) {
    Sample sample = Reading(t, t < kNoon - 5 * kMinute ? 5 : 9);
    sample.held.Put(Quantity::kWind);
    held.Add(sample);
  }
  EXPECT_EQ(TrendOf(held, Quantity::kWind, kNoon, kNone), kNone);
}

}  // namespace
}  // namespace orvalis
