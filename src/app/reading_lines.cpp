#include "app/reading_lines.h"

#include <array>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "verdict/explanation.h"

namespace orvalis {
namespace {

/// Any bytes as a JSON string. A garbled frame may contain bytes that are not text; each becomes the character with its
/// number.
std::string Quoted(std::string_view bytes) {
  constexpr std::string_view kHex = "0123456789abcdef";
  std::string text = "\"";
  for (const char c : bytes) {
    const auto byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      text += '\\';
      text += c;
    } else if (byte < 0x20 || byte >= 0x7f) {
      text += "\\u00";
      text += kHex[byte >> 4];
      text += kHex[byte & 0xf];
    } else {
      text += c;
    }
  }
  return text + '"';
}

/// Builds one JSON object in the order of the calls.
class JsonObject {
 public:
  JsonObject& Text(std::string_view name, std::string_view value, bool known = true) {
    return Raw(name, known ? Quoted(value) : "null");
  }
  /// UTF-8 unchanged, except for what JSON does not allow in a string.
  JsonObject& Utf8(std::string_view name, std::string_view value) {
    std::string text = "\"";
    for (const char c : value) {
      if (c == '"' || c == '\\') text += '\\';
      text += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
    }
    return Raw(name, text + '"');
  }
  JsonObject& Texts(std::string_view name, const std::vector<std::string_view>& values) {
    std::string list;
    for (const std::string_view value : values) list += (list.empty() ? "" : ",") + Quoted(value);
    return Raw(name, "[" + list + "]");
  }
  JsonObject& Boolean(std::string_view name, bool value) { return Raw(name, value ? "true" : "false"); }
  JsonObject& Number(std::string_view name, double value, bool known = true) {
    constexpr int kDecimals = 3;
    return Raw(name, known ? RealToText(RoundToDecimals(value, kDecimals)) : "null");
  }
  [[nodiscard]] std::string Finish() const { return "{" + fields_ + "}"; }

 private:
  JsonObject& Raw(std::string_view name, const std::string& value) {
    if (!fields_.empty()) fields_ += ',';
    fields_ += '"';
    fields_ += name;
    fields_ += "\":";
    fields_ += value;
    return *this;
  }

  std::string fields_;
};

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
  JsonObject object;
  object.Text("time", FormatIso8601(reading.time))
      .Text("source", w.from_demo ? "demo" : "unit")
      .Boolean("connected", reading.now.connected)
      .Text("frame", reading.frame.text())
      .Number("ambient_c", w.ambient_celsius, w.ambient_known)
      .Number("body_c", w.body_celsius, w.body_known)
      .Number("rain", w.rain)
      .Number("humidity_percent", w.humidity_percent, w.ambient_known)
      .Number("dew_point_c", w.dew_point_celsius, w.ambient_known)
      .Number("sky_c", w.sky_celsius)
      .Number("clear_sky_c", w.clear_sky_celsius, w.ambient_known)
      .Number("diff_c", w.difference_celsius, w.ambient_known)
      .Text("cloud_word", w.cloud.text, w.ambient_known)
      .Number("clouds", static_cast<double>(w.clouds))
      .Number("wind_mph", w.wind_mph)
      .Number("wind_average_mph", w.wind_average_mph)
      .Number("wind_gust_mph", w.wind_gust_mph)
      .Text("wind_word", w.wind_word.text)
      .Text("rain_word", w.rain_word.text)
      .Number("light", w.light)
      .Text("light_word", w.light_word.text)
      .Text("heater", w.heater.text)
      .Text("relay", w.relay.text)
      .Boolean("safe", reading.now.verdict.safe)
      .Texts("reasons", NamesOf(reading.now.verdict.reasons))
      .Number("age_s", reading.now.AgeSeconds(), reading.now.age.has_value())
      .Boolean("unit_unsafe", w.unsafe_indicator != 0)
      .Boolean("unsafe", !reading.now.verdict.safe);
  return object.Finish();
}

std::string VerdictJson(const CivilTime& time, const Observation& now) {
  return JsonObject()
      .Text("time", FormatIso8601(time))
      .Text("verdict", now.verdict.safe ? "safe" : "unsafe")
      .Texts("reasons", NamesOf(now.verdict.reasons))
      .Utf8("explanation", Explain(now))
      .Finish();
}

std::string EventText(const Event& event, const TimeStyle& style) { return style.time(event.time) + "  " + event.text; }

std::string EventJson(const Event& event) {
  return JsonObject().Text("time", FormatIso8601(event.time)).Utf8("event", event.text).Finish();
}

}  // namespace orvalis
