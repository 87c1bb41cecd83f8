#pragma once

#include <cstdint>
#include <string>

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

/// Milliseconds since 1970-01-01 UTC.
[[nodiscard]] std::int64_t UtcMilliseconds(const CivilTime& time);

/// "MM/DD/YYYY hh:mm AM", as the event list writes it; the hour runs from 01 to 12.
[[nodiscard]] std::string FormatEventTime(const CivilTime& time);
/// "2026-11-21T21:04:05.123+01:00"
[[nodiscard]] std::string FormatIso8601(const CivilTime& time);
/// "21:04:05"
[[nodiscard]] std::string FormatTimeOfDay(const CivilTime& time);

}  // namespace orvalis
