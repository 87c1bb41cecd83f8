#include "base/clock.h"

#include <array>
#include <chrono>
#include <cstdlib>

namespace orvalis {
namespace {

std::string Digits(int number, std::size_t width) {
  std::string digits = std::to_string(number);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return digits;
}

int HourOfTwelve(const CivilTime& time) { return time.hour % 12 == 0 ? 12 : time.hour % 12; }

std::chrono::sys_days DateOf(const CivilTime& time) { return std::chrono::year(time.year) / time.month / time.day; }

struct Piece {
  std::string_view mark;
  std::string (*text)(const CivilTime& time, bool of_twelve);
};
constexpr std::array kPieces{
    Piece{"YYYY", [](const CivilTime& t, bool) { return Digits(t.year, 4); }},
    Piece{"MM", [](const CivilTime& t, bool) { return Digits(t.month, 2); }},
    Piece{"DD", [](const CivilTime& t, bool) { return Digits(t.day, 2); }},
    Piece{"hh", [](const CivilTime& t, bool of_twelve) { return Digits(of_twelve ? HourOfTwelve(t) : t.hour, 2); }},
    Piece{"nn", [](const CivilTime& t, bool) { return Digits(t.minute, 2); }},
    Piece{"ss", [](const CivilTime& t, bool) { return Digits(t.second, 2); }},
    Piece{"zzz", [](const CivilTime& t, bool) { return Digits(t.millisecond, 3); }},
    Piece{"AM/PM", [](const CivilTime& t, bool) { return std::string(t.hour < 12 ? "AM" : "PM"); }},
};

}  // namespace

std::int64_t DayNumber(const CivilTime& time) { return DateOf(time).time_since_epoch().count(); }

std::int64_t UtcMilliseconds(const CivilTime& time) {
  using std::chrono::hours, std::chrono::minutes, std::chrono::seconds, std::chrono::milliseconds;
  const milliseconds since_epoch = DateOf(time).time_since_epoch() + hours(time.hour) + minutes(time.minute) +
                                   seconds(time.second) + milliseconds(time.millisecond) -
                                   minutes(time.utc_offset_minutes);
  return since_epoch.count();
}

CivilTime TimeAt(std::int64_t milliseconds, int utc_offset_minutes) {
  const std::chrono::sys_time<std::chrono::milliseconds> moment{std::chrono::milliseconds(milliseconds) +
                                                                std::chrono::minutes(utc_offset_minutes)};
  const auto midnight = std::chrono::floor<std::chrono::days>(moment);
  const std::chrono::year_month_day date{midnight};
  const std::chrono::hh_mm_ss time{moment - midnight};
  return {.year = static_cast<int>(date.year()),
          .month = static_cast<int>(static_cast<unsigned>(date.month())),
          .day = static_cast<int>(static_cast<unsigned>(date.day())),
          .hour = static_cast<int>(time.hours().count()),
          .minute = static_cast<int>(time.minutes().count()),
          .second = static_cast<int>(time.seconds().count()),
          .millisecond = static_cast<int>(time.subseconds().count()),
          .utc_offset_minutes = utc_offset_minutes};
}

std::string FormatTime(const CivilTime& time, std::string_view pattern) {
  const bool of_twelve = pattern.find("AM/PM") != std::string_view::npos;
  std::string text;
  while (!pattern.empty()) {
    std::size_t used = 0;
    for (const Piece& piece : kPieces) {
      if (!pattern.starts_with(piece.mark)) continue;
      text += piece.text(time, of_twelve);
      used = piece.mark.size();
      break;
    }
    if (used == 0) text += pattern[used++];
    pattern.remove_prefix(used);
  }
  return text;
}

std::string FormatEventTime(const CivilTime& time) { return FormatTime(time, "MM/DD/YYYY hh:nn AM/PM"); }

std::string FormatIso8601(const CivilTime& time) {
  const int offset = std::abs(time.utc_offset_minutes);
  return FormatTime(time, "YYYY-MM-DDThh:nn:ss.zzz") + (time.utc_offset_minutes < 0 ? '-' : '+') +
         Digits(offset / 60, 2) + ':' + Digits(offset % 60, 2);
}

std::string FormatIsoDate(const CivilTime& time) { return FormatTime(time, "YYYY-MM-DD"); }

}  // namespace orvalis
