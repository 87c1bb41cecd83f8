#include "base/clock.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <cstdlib>

namespace orvalis {
namespace {

template <typename... Numbers>
std::string Print(const char* format, Numbers... numbers) {
  std::array<char, 96> buffer;
  const int length = std::snprintf(buffer.data(), buffer.size(), format, numbers...);
  return {buffer.data(), static_cast<std::size_t>(length > 0 ? length : 0)};
}

}  // namespace

std::int64_t UtcMilliseconds(const CivilTime& time) {
  using std::chrono::hours, std::chrono::minutes, std::chrono::seconds, std::chrono::milliseconds;
  const std::chrono::sys_days date = std::chrono::year(time.year) / time.month / time.day;
  const milliseconds since_epoch = date.time_since_epoch() + hours(time.hour) + minutes(time.minute) +
                                   seconds(time.second) + milliseconds(time.millisecond) -
                                   minutes(time.utc_offset_minutes);
  return since_epoch.count();
}

std::string FormatEventTime(const CivilTime& time) {
  const int hour = time.hour % 12 == 0 ? 12 : time.hour % 12;
  return Print("%02d/%02d/%04d %02d:%02d ", time.month, time.day, time.year, hour, time.minute) +
         (time.hour < 12 ? "AM" : "PM");
}

std::string FormatIso8601(const CivilTime& time) {
  const int offset = std::abs(time.utc_offset_minutes);
  return Print("%04d-%02d-%02dT%02d:%02d:%02d.%03d", time.year, time.month, time.day, time.hour, time.minute,
               time.second, time.millisecond) +
         (time.utc_offset_minutes < 0 ? "-" : "+") + Print("%02d:%02d", offset / 60, offset % 60);
}

std::string FormatTimeOfDay(const CivilTime& time) {
  return Print("%02d:%02d:%02d", time.hour, time.minute, time.second);
}

}  // namespace orvalis
