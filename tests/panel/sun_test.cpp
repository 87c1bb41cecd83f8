#include <gtest/gtest.h>

#include <tuple>
#include <vector>

#include "panel/sun_text.h"
#include "tests/support/fake_event_loop.h"

namespace orvalis {
namespace {

constexpr std::int64_t kMinute = 60'000;
constexpr Place kBluffton{40.8939, -83.8917};
constexpr Place kDefiance{41.281944, -84.362778};
constexpr Place kTromso{69.5, 19.0};

/// Universal time.
std::int64_t At(int year, int month, int day, int hour, int minute = 0) {
  return UtcMilliseconds({.year = year, .month = month, .day = day, .hour = hour, .minute = minute});
}

TEST(Sun, RisesAndSetsAsTheNavalObservatorysTablesSay) {
  const Night bluffton = NightAt(kBluffton, At(2018, 9, 12, 20));
  const Night defiance = NightAt(kDefiance, At(2019, 11, 8, 20));
  const Night defiance_before = NightAt(kDefiance, At(2019, 11, 8, 9));
  const Night spring = NightAt(kTromso, At(2014, 4, 1, 2));
  const Night white = NightAt(kTromso, At(2014, 4, 30, 0));
  const Night last = NightAt(kTromso, At(2014, 5, 16, 20));
  const std::tuple<const char*, std::optional<std::int64_t>, std::int64_t> rows[] = {
      {"sunset in Ohio", bluffton.sunset, At(2018, 9, 12, 23, 50)},
      {"sunset in November", defiance.sunset, At(2019, 11, 8, 22, 25)},
      {"dusk in November", defiance.dusk, At(2019, 11, 8, 23, 59)},
      {"dawn in November", defiance_before.dawn, At(2019, 11, 8, 10, 42)},
      {"sunrise in November", defiance_before.sunrise, At(2019, 11, 8, 12, 17)},
      {"sunrise in the north", spring.sunrise, At(2014, 4, 1, 3, 50)},
      {"sunrise of a white night", white.sunrise, At(2014, 4, 30, 1, 29)},
      {"sunrise before the polar day", last.sunrise, At(2014, 5, 16, 23, 29)},
  };
  for (const auto& [what, time, table] : rows) {
    ASSERT_TRUE(time) << what;
    EXPECT_NEAR(static_cast<double>(*time), static_cast<double>(table), 1.5 * kMinute) << what;
  }
  EXPECT_FALSE(white.dusk || white.dawn) << "it gets no longer dark";
  const Night polar_day = NightAt(kTromso, At(2014, 6, 21, 12));
  EXPECT_FALSE(polar_day.sunset || polar_day.sunrise);
}

TEST(Sun, IsDescribedInEverySeasonAndAtThePoles) {
  const test::FakeClock clock;
  const std::tuple<Place, std::int64_t, const char*> rows[] = {
      {kDefiance, At(2019, 11, 8, 23, 59), "Sun 18° below the horizon, dusk 23:59, dawn 10:43"},
      {kDefiance, At(2019, 11, 8, 22, 25), "Sun on the horizon, dusk 23:59, dawn 10:43"},
      {kTromso, At(2014, 5, 5, 22, 41), "Sun 4° below the horizon, no full darkness"},   // 90 - 69.5 - 16.4
      {kTromso, At(2014, 6, 21, 10, 46), "Sun 44° above the horizon, it does not set"},  // 90 - 69.5 + 23.4
      {{90, 0}, At(2014, 12, 21, 12), "Sun 23° below the horizon, it does not rise, dark all day"},
      {{90, 0}, At(2014, 10, 20, 12), "Sun 10° below the horizon, it does not rise, no full darkness"},
  };
  for (const auto& [place, utc, line] : rows) EXPECT_EQ(DescribeSun(place, utc, clock).line, line);
  EXPECT_TRUE(DescribeSun(kDefiance, At(2019, 11, 8, 20), clock)
                  .meaning.starts_with("Next sunset 22:25, dusk 23:59, dawn 10:43, sunrise 12:18. "));
}

TEST(Sun, APlaceIsReadAsPeopleWriteIt) {
  const std::tuple<const char*, Axis, std::optional<double>> rows[] = {
      {"48.137", Axis::kLatitude, 48.137},        {" -48,5 ", Axis::kLatitude, -48.5},
      {"48°07'30\" N", Axis::kLatitude, 48.125},  {"s 33 52.5", Axis::kLatitude, -33.875},
      {"70 24 00 W", Axis::kLongitude, -70.4},    {"180", Axis::kLongitude, 180},
      {"90.1", Axis::kLatitude, std::nullopt},    {"181", Axis::kLongitude, std::nullopt},
      {"48 N", Axis::kLongitude, std::nullopt},   {"-48 S", Axis::kLatitude, std::nullopt},
      {"48 61", Axis::kLatitude, std::nullopt},   {"1.2.3", Axis::kLatitude, std::nullopt},
      {"nowhere", Axis::kLatitude, std::nullopt}, {"", Axis::kLatitude, std::nullopt},
  };
  for (const auto& [text, axis, degrees] : rows) {
    const std::optional<double> read = ParseCoordinate(text, axis);
    ASSERT_EQ(read.has_value(), degrees.has_value()) << text;
    EXPECT_NEAR(read.value_or(0), degrees.value_or(0), 1e-9) << text;
  }
}

}  // namespace
}  // namespace orvalis
