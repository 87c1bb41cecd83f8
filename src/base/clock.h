#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace orvalis {

/// A moment in the civil calendar, in the zone that `utc_offset_minutes` tells.
struct CivilTime {
  int year = 1970;
  int month = 1;   ///< 1 to 12
  int day = 1;     ///< 1 to 31
  int hour = 0;    ///< 0 to 23
  int minute = 0;  ///< 0 to 59
  int second = 0;  ///< 0 to 60
  int millisecond = 0;
  int utc_offset_minutes = 0;  ///< east of Greenwich is positive
};

/// The time of day. It may jump either way, so durations come from `EventLoop::TickCount`.
class Clock {
 public:
  virtual ~Clock() = default;
  [[nodiscard]] virtual CivilTime LocalNow() const = 0;
  [[nodiscard]] virtual CivilTime UtcNow() const = 0;
};

/// Days since 1970-01-01 of the date alone.
[[nodiscard]] std::int64_t DayNumber(const CivilTime& time);
/// Milliseconds since 1970-01-01 UTC.
[[nodiscard]] std::int64_t UtcMilliseconds(const CivilTime& time);
/// The UTC time of `milliseconds` since 1970-01-01 UTC.
[[nodiscard]] CivilTime UtcTime(std::int64_t milliseconds);

/// `time` as `pattern` says: "YYYY", "MM", "DD", "hh", "nn" (minutes), "ss" and "zzz" (milliseconds) with all their
/// digits; anything else stands for itself. With "AM/PM" in it the hours run from 01 to 12.
[[nodiscard]] std::string FormatTime(const CivilTime& time, std::string_view pattern);
/// "MM/DD/YYYY hh:nn AM", as the lines about reconnecting have it whatever the user's habits are.
[[nodiscard]] std::string FormatEventTime(const CivilTime& time);
/// "2026-11-21T21:04:05.123+01:00"
[[nodiscard]] std::string FormatIso8601(const CivilTime& time);
/// "2026-11-21"
[[nodiscard]] std::string FormatIsoDate(const CivilTime& time);

/// How the user's desktop writes dates and times, for everything that a person reads. What other programs read has
/// forms of its own.
struct TimeStyle {
  using Format = std::function<std::string(const CivilTime&)>;
  Format date;
  Format time;             ///< of the day, with seconds
  Format hour_and_minute;  ///< of the day
};
/// From now on, for the whole program; without it dates and times are written as by "YYYY-MM-DD" and "hh:nn:ss".
void UseTimeStyle(TimeStyle style);

/// As the user writes a date.
[[nodiscard]] std::string FormatDate(const CivilTime& time);
/// As the user writes a time of the day, with seconds.
[[nodiscard]] std::string FormatTimeOfDay(const CivilTime& time);
/// The same without seconds.
[[nodiscard]] std::string FormatHourAndMinute(const CivilTime& time);

}  // namespace orvalis
