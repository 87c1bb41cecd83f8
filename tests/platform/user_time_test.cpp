#include "platform/qt/user_time.h"

#include <gtest/gtest.h>

namespace orvalis {
namespace {

TEST(UserTime, IsWrittenAsTheLocaleHasItWithAllOfTheYearAndNoZone) {
  const CivilTime evening{2026, 11, 2, 21, 4, 5, 0, 60};
  const struct {
    QLocale locale;
    const char* date;
    const char* time;
    const char* hour_and_minute;
  } cases[] = {
      {QLocale("en_US"), "11/2/2026", "9:04:05 PM", "9:04 PM"},
      {QLocale("de_DE"), "02.11.2026", "21:04:05", "21:04"},
      {QLocale("zh_CN"), "2026/11/2", "21:04:05", "21:04"},             // the zone comes first there
      {QLocale("fr_CA"), "2026-11-02", "21 h 04 min 05 s", "21 h 04"},  // with letters that are text
      {QLocale::c(), "2026-11-02", "21:04:05", "21:04"},
  };
  for (const auto& expected : cases) {
    const TimeStyle style = TimeStyleOf(expected.locale);
    EXPECT_EQ(style.date(evening), expected.date);
    EXPECT_EQ(style.time(evening), expected.time);
    EXPECT_EQ(style.hour_and_minute(evening), expected.hour_and_minute);
  }
}

}  // namespace
}  // namespace orvalis
