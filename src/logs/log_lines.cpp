#include "logs/log_lines.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <utility>

#include "base/text.h"

namespace orvalis {
namespace {

/// Days since 1899-12-30 with the time as a fraction, local time.
double DayCount(const CivilTime& time) {
  constexpr CivilTime kBegin{.year = 1899, .month = 12, .day = 30};
  const double seconds = time.hour * 3600 + time.minute * 60 + time.second + time.millisecond / 1000.0;
  return static_cast<double>(DayNumber(time) - DayNumber(kBegin)) + seconds / 86400;
}

/// "YYYY-MM-DD hh:nn.ss.00"; readers expect the dot between minutes and seconds.
std::string RecordTime(const CivilTime& time) { return FormatTime(time, "YYYY-MM-DD hh:nn.ss.00"); }

/// One row of a table of words and codes.
struct Code {
  std::string_view word;
  int code;
};

template <std::size_t kCount>
int CodeOf(std::string_view word, const std::array<Code, kCount>& codes) {
  for (const Code& row : codes) {
    if (row.word == word) return row.code;
  }
  return 0;  // unknown
}

constexpr std::array<Code, 3> kCloudCodes{{{"Clear", 1}, {"PCloudy", 2}, {"Cloudy", 3}}};
constexpr std::array<Code, 3> kWindCodes{{{"Calm", 1}, {"Breeze", 2}, {"Windy", 3}}};
constexpr std::array<Code, 3> kDaylightCodes{{{"Dark", 1}, {"Dusk", 2}, {"Day", 3}}};

/// 1 not raining, 2 recently, 3 raining; dampness alone is "recently".
int RainCondition(const WeatherState& weather, const RainMemory& rain) {
  if (weather.rain_word.text.empty()) return 0;
  if (rain.rain_flag() == 2) return 3;
  return rain.rain_flag() != 0 || rain.wet_flag() != 0 ? 2 : 1;
}

}  // namespace

int RainMemory::Flag(bool now, std::int64_t tick_count, std::int64_t& last) {
  if (now) {
    last = tick_count;
    return 2;
  }
  return tick_count - last <= kLastMinute ? 1 : 0;
}

void RainMemory::Note(const WeatherState& weather, std::int64_t tick_count) {
  rain_flag_ = Flag(weather.rain_word.text == "Rain", tick_count, last_rain_);
  wet_flag_ = Flag(weather.raining, tick_count, last_wet_);
}

std::string FullLogLine(const LogEntry& entry) {
  using Field = SensorFrame::Field;
  const WeatherState& w = entry.weather;
  std::string line = FormatTime(entry.time, "YYYY-MM-DD hh:nn:ss");
  const auto add = [&](const char* label, double value, int decimals) {
    line += label;
    line += FormatFixed(value, decimals);
  };
  const auto count = [&](const char* label, Field field) { add(label, entry.frame.Number(field), 0); };
  add(" WingAvg = ", w.wind_average_mph, 1);
  add(" Gusts = ", w.wind_gust_mph, 1);
  add(" Rain = ", w.rain, 0);
  add(" TpT = ", w.body_celsius, 1);
  add(" AmbT = ", w.ambient_celsius, 1);
  add(" DpT = ", w.dew_point_celsius, 1);
  add(" RH = ", w.humidity_percent, 0);
  add(" MeasSky = ", w.sky_celsius, 1);
  add(" CalcSky = ", w.clear_sky_celsius, 1);
  add(" Diff = ", w.difference_celsius, 1);
  count(" TPraw = ", Field::kTp);
  count(" Hraw = ", Field::kHum);
  count(" Brght = ", Field::kLgt);
  count(" HTRaL = ", Field::kAh);
  count(" HTRoN = ", Field::kHb);
  count(" RLYaL = ", Field::kAr);
  count(" RLYoN = ", Field::kRb);
  count(" ALght = ", Field::kAl);
  count(" AWnd = ", Field::kAw);
  return line;
}

std::string OneLineRecord(const LogEntry& entry, const RainMemory& rain) {
  const WeatherState& w = entry.weather;
  std::string record = RecordTime(entry.time) + " C M ";
  bool first = true;
  const auto add = [&](double value, int decimals, std::size_t width) {
    if (!std::exchange(first, false)) record += ' ';
    // Readers go by the places: what does not fit into its own becomes the nearest that does.
    const double step = std::pow(10.0, -decimals);
    const double limit = std::pow(10.0, static_cast<double>(width) - (decimals > 0 ? decimals + 1 : 0));
    record += RightAlign(FormatFixed(std::clamp(value, step - limit / 10, limit - step), decimals), width);
  };
  add(-w.difference_celsius, 1, 6);
  add(w.ambient_celsius, 1, 6);
  add(w.body_celsius, 1, 6);
  add(w.wind_mph, 1, 6);
  add(w.humidity_percent, 0, 3);
  add(w.dew_point_celsius, 0, 6);
  add(w.heater.text == "Y" ? 100 : 0, 0, 3);
  add(rain.rain_flag(), 0, 1);
  add(rain.wet_flag(), 0, 1);
  add(entry.seconds_since_frame, 0, 5);
  const std::string days = FormatFixed(DayCount(entry.time), 5);
  record += ' ' + RightAlign(std::string(days.size() < 12 ? 12 - days.size() : 0, '0') + days, 12);
  const auto add_condition = [&](int code) { add(entry.current ? code : 0, 0, 1); };
  add_condition(w.ambient_known ? CodeOf(w.cloud.text, kCloudCodes) : 0);
  add_condition(CodeOf(w.wind_word.text, kWindCodes));
  add_condition(RainCondition(w, rain));
  add_condition(CodeOf(w.light_word.text, kDaylightCodes));
  add(entry.safe ? 0 : 1, 0, 1);
  return record;
}

}  // namespace orvalis
