#include "panel/verdict_banner.h"

#include <gtest/gtest.h>

#include "panel/tray_model.h"
#include "tests/support/fake_event_loop.h"

namespace orvalis {
namespace {

using std::chrono::minutes;
using std::chrono::seconds;
using enum VerdictBanner::State;

constexpr std::int64_t kMinute = 60'000;

/// At 21:04:05, four minutes after `reasons` began to apply, with a reading two seconds old.
Observation Unsafe(std::initializer_list<Reason> reasons, std::int64_t now) {
  Observation o;
  o.time = now;
  o.age = seconds(2);
  o.source = ReadingSource::kUnit;
  o.verdict.lasted = minutes(4);
  o.verdict.reason_since.fill(now - 4 * kMinute);
  for (const Reason reason : reasons) o.verdict.reasons.Add(reason);
  o.figures.rain = 412;
  o.figures.rain_limit = 350;
  return o;
}

TEST(VerdictBanner, SaysWhatItIsWhyAndSinceWhen) {
  const test::FakeClock clock;
  const std::int64_t now = UtcMilliseconds(clock.now);
  Observation safe = Unsafe({}, now);
  safe.verdict.safe = true;
  safe.verdict.since = 0;  // the clock has been set since
  safe.verdict.lasted = minutes(53);
  Observation demo = safe;
  demo.source = ReadingSource::kDemo;
  Observation hold = Unsafe({Reason::kHold}, now);
  hold.verdict.hold_left = seconds(8);
  Observation testing = Unsafe({Reason::kForced}, now);
  testing.figures.test_left = seconds(12);
  Observation wet_test = Unsafe({Reason::kUnitAlarm, Reason::kForced}, now);
  wet_test.figures.test_left = seconds(12);
  Observation lost = Unsafe({Reason::kNoConnection, Reason::kStale}, now);
  lost.source = ReadingSource::kNone;
  lost.age = minutes(21 * 60 + 5);
  lost.verdict.lasted = *lost.age - seconds(10);
  lost.verdict.reason_since.fill(now - 1320 * kMinute);

  const std::tuple<Observation, VerdictBanner::State, const char*, const char*, const char*, const char*> rows[] = {
      {safe, kSafe, "SAFE", "SAFE", "", "safe since 20:11, reading at 21:04:03"},
      {demo, kSafeDemo, "SAFE - demo mode: the values are simulated", "SAFE (demo)", "the values are simulated",
       "safe since 20:11, reading at 21:04:03"},
      {hold, kSafeSoon, "SAFE in 8 s", "SAFE in 8 s", "", "unsafe since 21:00"},
      {Unsafe({Reason::kHold}, now), kSafeSoon, "SAFE after another good reading", "SAFE soon",
       "after another good reading", "unsafe since 21:00"},
      {Unsafe({Reason::kUnitAlarm, Reason::kRain, Reason::kWind}, now), kUnsafe,
       "UNSAFE - rain, limit 350 passed at 21:00", "UNSAFE", "rain, limit 350 passed at 21:00",
       "unsafe since 21:00, 2 more reasons"},
      {Unsafe({Reason::kForced}, now), kUnsafe, "UNSAFE - forced by hand since 21:00", "UNSAFE",
       "forced by hand since 21:00", "release it under \"Verdict\""},
      {Unsafe({Reason::kUnitAlarm, Reason::kForced}, now), kUnsafe, "UNSAFE - rain, limit 350 passed at 21:00",
       "UNSAFE", "rain, limit 350 passed at 21:00", "also forced by hand, release it under \"Verdict\""},
      {testing, kUnsafe, "UNSAFE - a test, 12 s left", "UNSAFE", "a test, 12 s left", "unsafe since 21:00"},
      {wet_test, kUnsafe, "UNSAFE - rain, limit 350 passed at 21:00", "UNSAFE", "rain, limit 350 passed at 21:00",
       "also a test, 12 s left"},
      {lost, kUnsafe, "UNSAFE - not connected to the unit since 2026-11-20 23:04", "UNSAFE",
       "not connected to the unit since 2026-11-20 23:04",
       "unsafe since 2026-11-20 23:59, last reading at 2026-11-20 23:59:05"},
  };
  for (const auto& [observation, state, text, word, reason, since] : rows) {
    const VerdictBanner banner = BannerOf(observation, clock, {});
    EXPECT_EQ(banner.state, state) << text;
    EXPECT_EQ(banner.text, text);
    EXPECT_EQ(banner.word, word) << text;
    EXPECT_EQ(banner.reason, reason) << text;
    EXPECT_EQ(banner.since, since) << text;
    EXPECT_EQ(banner.forced, banner.since.find("release") != std::string::npos) << text;
    EXPECT_EQ(banner.testing, (banner.reason + banner.since).find("test") != std::string::npos) << text;
  }
}

TEST(VerdictBanner, TheTrayTellsEachChangeAndNeverTheWordOfWhatWillBe) {
  const auto banner_of = [](VerdictBanner::State state, const char* word, const char* since) {
    VerdictBanner banner;
    banner.state = state;
    banner.word = word;
    banner.since = since;
    return banner;
  };
  const VerdictBanner safe = banner_of(kSafe, "SAFE", "safe since 20:11");
  const VerdictBanner hold = banner_of(kSafeSoon, "SAFE in 8 s", "unsafe since 21:04");
  VerdictBanner wet = banner_of(kUnsafe, "UNSAFE", "unsafe since 21:04");
  wet.explanations = {"rain 412 counts, limit 350; the unit stays on", "rain 412 counts, limit 350", "wind"};
  TrayModel model;
  const std::pair<VerdictBanner, std::optional<TrayMessage>> rows[] = {
      {hold, std::nullopt},
      {safe, TrayMessage{true, "SAFE", "safe since 20:11"}},
      {safe, std::nullopt},
      {wet, TrayMessage{false, "UNSAFE", "rain 412 counts, limit 350; the unit stays on\nwind"}},
      {hold, std::nullopt},
      {safe, TrayMessage{true, "SAFE", "safe since 20:11"}},
      {hold, TrayMessage{false, "UNSAFE", "unsafe since 21:04"}},
  };
  for (const auto& [banner, message] : rows) EXPECT_EQ(model.Take(banner), message) << banner.word;
}

TEST(VerdictBanner, ExplainsEveryReasonInTheUsersNumbers) {
  Observation o = Unsafe({Reason::kRain, Reason::kWind}, 0);
  o.figures.wind_mph = 14.3;
  o.figures.wind_mph_limit = 12;
  const NumberLocale german{.decimal_separator = ',', .name = "de"};
  EXPECT_EQ(BannerOf(o, test::FakeClock(), german).explanations,
            (std::vector<std::string>{"rain 412 counts, limit 350", "wind 14,3 mph, limit 12,0 mph"}));
}

}  // namespace
}  // namespace orvalis
