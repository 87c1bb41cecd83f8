#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace orvalis {

/// A date and time in the zone given by `utc_offset_minutes`.
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

/// Days since 1970-01-01, ignoring the time of day.
[[nodiscard]] std::int64_t DayNumber(const CivilTime& time);
/// Milliseconds since 1970-01-01 UTC.
[[nodiscard]] std::int64_t UtcMilliseconds(const CivilTime& time);
/// `milliseconds` since 1970-01-01 UTC as a time of the zone that is `utc_offset_minutes` east of Greenwich.
[[nodiscard]] CivilTime TimeAt(std::int64_t milliseconds, int utc_offset_minutes = 0);

/// Formats `time`. "YYYY", "MM", "DD", "hh", "nn" (minutes), "ss" and "zzz" (milliseconds) in `pattern` are
/// zero-padded; anything else is copied. With "AM/PM" the hours run from 01 to 12.
[[nodiscard]] std::string FormatTime(const CivilTime& time, std::string_view pattern);
/// "MM/DD/YYYY hh:nn AM", the fixed format of the reconnect lines.
[[nodiscard]] std::string FormatEventTime(const CivilTime& time);
/// "2026-11-21T21:04:05.123+01:00"
[[nodiscard]] std::string FormatIso8601(const CivilTime& time);
/// "2026-11-21"
[[nodiscard]] std::string FormatIsoDate(const CivilTime& time);

/// The desktop's date and time formats, for text that people read. What other programs read has fixed formats.
struct TimeStyle {
  using Format = std::function<std::string(const CivilTime&)>;
  Format date = FormatIsoDate;
  /// Of the day, with seconds.
  Format time = [](const CivilTime& time) { return FormatTime(time, "hh:nn:ss"); };
  /// Of the day.
  Format hour_and_minute = [](const CivilTime& time) { return FormatTime(time, "hh:nn"); };
};

/// The wall clock. It may jump either way, so durations are measured with `EventLoop::TickCount`.
class Clock {
 public:
  explicit Clock(TimeStyle style = {}) : style_(std::move(style)) {}
  virtual ~Clock() = default;
  [[nodiscard]] virtual CivilTime LocalNow() const = 0;
  [[nodiscard]] virtual CivilTime UtcNow() const = 0;
  /// The local time of `milliseconds` since 1970-01-01 UTC, with the offset that holds or held then.
  [[nodiscard]] virtual CivilTime LocalAt(std::int64_t milliseconds) const = 0;
  /// How its times are written for people.
  [[nodiscard]] const TimeStyle& style() const { return style_; }

 private:
  TimeStyle style_;
};

}  // namespace orvalis
