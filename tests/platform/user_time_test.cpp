#include "platform/qt/user_time.h"

#include <gtest/gtest.h>

#include <tuple>

namespace orvalis {
namespace {

TEST(UserTime, IsWrittenAsTheLocaleHasItWithAllOfTheYearAndNoZone) {
  const CivilTime evening{2026, 11, 2, 21, 4, 5, 0, 60};
  const std::tuple<QLocale, const char*, const char*, const char*> cases[] = {
      {QLocale("en_US"), "11/2/2026", "9:04:05 PM", "9:04 PM"},
      {QLocale("de_DE"), "02.11.2026", "21:04:05", "21:04"},
      {QLocale("zh_CN"), "2026/11/2", "21:04:05", "21:04"},             // the zone comes first there
      {QLocale("fr_CA"), "2026-11-02", "21 h 04 min 05 s", "21 h 04"},  // with letters that are text
      {QLocale::c(), "2026-11-02", "21:04:05", "21:04"},
  };
  for (const auto& [locale, date, time, hour_and_minute] : cases) {
    const TimeStyle style = TimeStyleOf(locale);
    EXPECT_EQ(style.date(evening), date);
    EXPECT_EQ(style.time(evening), time);
    EXPECT_EQ(style.hour_and_minute(evening), hour_and_minute);
  }
}

}  // namespace
}  // namespace orvalis
