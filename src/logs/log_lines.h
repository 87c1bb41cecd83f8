#pragma once

#include <cstdint>
#include <string>

#include "base/clock.h"
#include "reading/sensor_frame.h"
#include "reading/weather_state.h"

namespace orvalis {

/// What a working cycle logs.
struct LogEntry {
  CivilTime time;
  const WeatherState& weather;
  const SensorFrame& frame;
  std::int16_t seconds_since_frame = 0;
  bool safe = false;    ///< the verdict
  bool current = true;  ///< the conditions are of now; otherwise they are logged as unknown
};

/// Remembers when it last rained and was wet, for the "in the last minute" flags of the one-line record.
class RainMemory {
 public:
  static constexpr std::int64_t kLastMinute = 60'000;  ///< ms

  /// Call once in each working cycle; `tick_count` in ms.
  void Note(const WeatherState& weather, std::int64_t tick_count);
  /// 0 dry, 1 in the last minute, 2 now.
  [[nodiscard]] int rain_flag() const { return rain_flag_; }
  [[nodiscard]] int wet_flag() const { return wet_flag_; }

 private:
  static int Flag(bool now, std::int64_t tick_count, std::int64_t& last);

  std::int64_t last_rain_ = -kLastMinute - 1;
  std::int64_t last_wet_ = -kLastMinute - 1;
  int rain_flag_ = 0;
  int wet_flag_ = 0;
};

/// The line of the full log: date and time, then labelled values.
[[nodiscard]] std::string FullLogLine(const LogEntry& entry);

/// The one-line record for other programs: date, time, units and sixteen values in fixed columns, see docs/logs.md.
[[nodiscard]] std::string OneLineRecord(const LogEntry& entry, const RainMemory& rain);

}  // namespace orvalis
