#include "app/reading_lines.h"

#include <nlohmann/json.hpp>
#include <string_view>

#include "base/text.h"
#include "verdict/explanation.h"

namespace orvalis {
namespace {

using Json = nlohmann::ordered_json;

/// A garbled frame may contain bytes that are not text: each becomes the character with its number.
std::string Characters(std::string_view bytes) {
  std::string text;
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (byte < 0x80) {
      text += c;
    } else {
      text += static_cast<char>(0xc0 | (byte >> 6));
      text += static_cast<char>(0x80 | (byte & 0x3f));
    }
  }
  return text;
}

Json NumberOrNull(double value, bool known) {
  constexpr int kDecimals = 3;
  return known ? Json(RoundToDecimals(value, kDecimals)) : Json();
}

std::string Line(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

}  // namespace

std::string ReadingText(const Reading& reading, const TimeStyle& style) {
  const WeatherState& w = reading.weather;
  const auto number = [](double value, std::string_view unit, bool known = true) {
    return known ? FormatFixed(value, 1) + std::string(unit) : std::string("-");
  };
  std::string line = style.time(reading.time);
  const auto add = [&](std::string_view label, const std::string& value) {
    line += "  ";
    line += label;
    line += value;
  };
  const SafetyVerdict& verdict = reading.now.verdict;
  add("", verdict.safe ? "safe" : "UNSAFE (" + ReasonNames(verdict) + ")");
  add("", w.ambient_known ? std::string(w.cloud.text) : "sky unknown");
  add("", std::string(w.wind_word.text));
  add("", std::string(w.rain_word.text));
  add("", std::string(w.light_word.text));
  add("ambient ", number(w.ambient_celsius, " C", w.ambient_known));
  add("humidity ", number(w.humidity_percent, " %", w.ambient_known));
  add("dew point ", number(w.dew_point_celsius, " C", w.ambient_known));
  add("sky ", number(w.sky_celsius, " C"));
  add("diff ", number(w.difference_celsius, " C", w.ambient_known));
  add("wind ", number(w.wind_mph, " mph"));
  add("gust ", number(w.wind_gust_mph, " mph"));
  add("rain ", std::to_string(w.rain));
  add("light ", FormatFixed(w.light, 0));
  add("heater ", std::string(w.heater.text));
  add("relay ", std::string(w.relay.text));
  if (w.from_demo) add("", "(demo)");
  return line;
}

std::string ReadingJson(const Reading& reading) {
  const WeatherState& w = reading.weather;
  const Observation& now = reading.now;
  const auto ambient = [&w](double value) { return NumberOrNull(value, w.ambient_known); };
  const auto number = [](double value) { return NumberOrNull(value, true); };
  return Line({{"time", FormatIso8601(reading.time)},
               {"source", w.from_demo ? "demo" : "unit"},
               {"connected", now.connected},
               {"frame", Characters(reading.frame.text())},
               {"ambient_c", ambient(w.ambient_celsius)},
               {"body_c", NumberOrNull(w.body_celsius, w.body_known)},
               {"rain", w.rain},
               {"humidity_percent", ambient(w.humidity_percent)},
               {"dew_point_c", ambient(w.dew_point_celsius)},
               {"sky_c", number(w.sky_celsius)},
               {"clear_sky_c", ambient(w.clear_sky_celsius)},
               {"diff_c", ambient(w.difference_celsius)},
               {"cloud_word", w.ambient_known ? Json(w.cloud.text) : Json()},
               {"clouds", number(static_cast<double>(w.clouds))},
               {"wind_mph", number(w.wind_mph)},
               {"wind_average_mph", number(w.wind_average_mph)},
               {"wind_gust_mph", number(w.wind_gust_mph)},
               {"wind_word", w.wind_word.text},
               {"rain_word", w.rain_word.text},
               {"light", number(w.light)},
               {"light_word", w.light_word.text},
               {"heater", w.heater.text},
               {"relay", w.relay.text},
               {"safe", now.verdict.safe},
               {"reasons", NamesOf(now.verdict.reasons)},
               {"age_s", NumberOrNull(now.AgeSeconds(), now.age.has_value())},
               {"unit_unsafe", w.unsafe_indicator != 0},
               {"unsafe", !now.verdict.safe}});
}

std::string VerdictJson(const CivilTime& time, const Observation& now) {
  return Line({{"time", FormatIso8601(time)},
               {"verdict", now.verdict.safe ? "safe" : "unsafe"},
               {"reasons", NamesOf(now.verdict.reasons)},
               {"explanation", Explain(now)}});
}

std::string EventText(const Event& event, const TimeStyle& style) { return style.time(event.time) + "  " + event.text; }

std::string EventJson(const Event& event) { return Line({{"time", FormatIso8601(event.time)}, {"event", event.text}}); }

}  // namespace orvalis
