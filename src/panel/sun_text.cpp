#include "panel/sun_text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <system_error>

namespace orvalis {
namespace {

/// Removes what separates the numbers of a coordinate: blanks and the marks of degrees, minutes and seconds, some of
/// which are longer than a byte.
std::string_view SkipMarks(std::string_view text) {
  constexpr std::array<std::string_view, 10> kMarks{" ", "\t", "'", "\"", "°", "º", "′", "″", "’", "”"};
  for (bool found = true; found;) {
    found = false;
    for (const std::string_view mark : kMarks) {
      if (!text.starts_with(mark)) continue;
      text.remove_prefix(mark.size());
      found = true;
    }
  }
  return text;
}

/// The number at the start of `text`, which is removed; with a point or a comma, and without a sign.
std::optional<double> TakeNumber(std::string_view& text) {
  constexpr std::string_view kDigits = "0123456789.,";
  std::string number(text.substr(0, std::min(text.find_first_not_of(kDigits), text.size())));
  std::ranges::replace(number, ',', '.');
  double value = 0;
  const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
  if (error != std::errc() || end != number.data() + number.size()) return std::nullopt;
  text.remove_prefix(number.size());
  return value;
}

/// Removes the sign that a letter or a plus or minus gives; 0 when `text` has none.
int TakeSign(std::string_view& text, std::string_view positive, std::string_view negative) {
  if (text.empty()) return 0;
  const char first = static_cast<char>(std::toupper(static_cast<unsigned char>(text.front())));
  const int sign = positive.find(first) != std::string_view::npos   ? 1
                   : negative.find(first) != std::string_view::npos ? -1
                                                                    : 0;
  if (sign != 0) text.remove_prefix(1);
  return sign;
}

}  // namespace

std::optional<double> ParseCoordinate(std::string_view text, Axis axis) {
  const bool latitude = axis == Axis::kLatitude;
  const std::string_view positive = latitude ? "N" : "E";
  const std::string_view negative = latitude ? "S" : "W";
  text = SkipMarks(text);
  int sign = TakeSign(text, "+", "-");
  if (sign == 0) sign = TakeSign(text, positive, negative);
  double value = 0;
  int parts = 0;
  for (double unit = 1; parts < 3; ++parts, unit /= 60) {
    text = SkipMarks(text);
    const std::optional<double> number = TakeNumber(text);
    if (!number) break;
    if (parts > 0 && *number >= 60) return std::nullopt;
    value += *number * unit;
  }
  text = SkipMarks(text);
  if (sign == 0) {
    sign = TakeSign(text, positive, negative);
    text = SkipMarks(text);
  }
  if (parts == 0 || !text.empty() || value > (latitude ? 90 : 180)) return std::nullopt;
  return sign < 0 ? -value : value;
}

SunText DescribeSun(const Place& place, std::int64_t utc, const Clock& clock, const Language& language) {
  const double altitude = SunAltitude(place, utc);
  const Night night = NightAt(place, utc);
  const auto at = [&](Phrase name, const std::optional<std::int64_t>& time) -> Message {
    constexpr std::int64_t kHalfMinute = 30'000;
    if (!time) return {};
    return name.With(clock.style().hour_and_minute(clock.LocalAt(*time + kHalfMinute)));
  };
  const Message dusk = at(Message::Of("dusk %1"), night.dusk);
  const Message dawn = at(Message::Of("dawn %1"), night.dawn);
  const bool up = altitude > kHorizonDegrees;
  const bool at_horizon = std::abs(altitude - kHorizonDegrees) < 1;
  const std::string degrees = FormatFixed(std::abs(altitude), 0);
  Message line = at_horizon ? Message::Of("Sun on the horizon")
                 : up       ? Message::Of("Sun %1° above the horizon").With(degrees)
                            : Message::Of("Sun %1° below the horizon").With(degrees);
  const auto add = [&](const Message& more) { line = Joined(line, ", ", more); };

  const bool extreme = !night.sunset && !night.sunrise;
  if (extreme) add(up ? Message::Of("it does not set") : Message::Of("it does not rise"));
  if (night.dusk || night.dawn) {
    add(dusk);
    add(dawn);
  } else if (!extreme || !up) {
    // Neither: always dark, or never. Where it does not set, that says enough.
    add(altitude < kDarkDegrees ? Message::Of("dark all day") : Message::Of("no full darkness"));
  }
  Message times;
  for (const Message& time :
       {at(Message::Of("sunset %1"), night.sunset), dusk, dawn, at(Message::Of("sunrise %1"), night.sunrise)}) {
    times = Joined(times, ", ", time);
  }
  if (!times.empty()) times = Message::Of("Next %1.").With(times);
  const Message meaning =
      Message::Of("Between dusk and dawn the sun is 18° or more below the horizon, and the sky as dark as it gets.");
  return {.line = line.In(language), .meaning = Joined(times, " ", meaning).In(language)};
}

}  // namespace orvalis
