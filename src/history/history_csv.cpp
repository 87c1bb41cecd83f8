#include "history/history_csv.h"

#include <string_view>

#include "base/text.h"
#include "reading/conversions.h"

namespace orvalis {
namespace {

std::string ColumnName(Quantity quantity, bool centigrade) {
  const auto temperature = [&](std::string_view name) { return std::string(name) + (centigrade ? "_c" : "_f"); };
  switch (quantity) {
    case Quantity::kSky:
      return temperature("sky");
    case Quantity::kClearSky:
      return temperature("clear_sky");
    case Quantity::kAmbient:
      return temperature("ambient");
    case Quantity::kDewPoint:
      return temperature("dew_point");
    case Quantity::kWind:
      return "wind_mph";
    case Quantity::kGust:
      return "wind_gust_mph";
    case Quantity::kHumidity:
      return "humidity_percent";
    case Quantity::kRain:
      return "rain_counts";
    case Quantity::kLight:
      return "light_counts";
  }
  return "";
}

std::string_view SkyWord(SmallSet<Condition> conditions) {
  if (conditions.Has(Condition::kClear)) return "Clear";
  if (conditions.Has(Condition::kPartlyCloudy)) return "PCloudy";
  if (conditions.Has(Condition::kCloudy)) return "Cloudy";
  return "";
}

/// `text` as a field. In quotes, because it may contain commas.
std::string Quoted(std::string_view text) {
  std::string field = "\"";
  for (const char c : text) field += c == '"' ? "\"\"" : std::string(1, c);
  return field + '"';
}

}  // namespace

bool IsTemperature(Quantity quantity) {
  return quantity == Quantity::kSky || quantity == Quantity::kClearSky || quantity == Quantity::kAmbient ||
         quantity == Quantity::kDewPoint;
}

double ShownValue(Quantity quantity, double value, const DisplayUnits& units) {
  if (IsTemperature(quantity)) return units.Temperature(value);
  return quantity == Quantity::kWind || quantity == Quantity::kGust ? units.Wind(value) : value;
}

std::string HistoryCsv(const HistoryView& view, TimeRange range, std::span<const Quantity> quantities, bool centigrade,
                       const LocalTimeOf& local_time) {
  std::string csv = "time,until,source,value,verdict,unit_unsafe,sky_word,rain,held";
  for (const Quantity quantity : quantities) csv += "," + ColumnName(quantity, centigrade);
  csv += "\r\n";
  const DisplayUnits units{.centigrade = centigrade};
  const auto row = [&](const Span& span, std::string_view kind, const Values& values) {
    csv += FormatIso8601(local_time(span.first));
    csv += ',';
    csv += FormatIso8601(local_time(span.last));
    csv += view.demo ? ",demo," : ",unit,";
    csv += kind;
    csv += ',';
    csv += VerdictDuring(view, {.from = span.first, .to = span.last}).Word();
    csv += span.conditions.Has(Condition::kUnsafe) ? ",1," : ",0,";
    csv += SkyWord(span.conditions);
    csv += span.conditions.Has(Condition::kRain) ? ",1," : ",0,";
    std::string_view blank;
    for (const Quantity quantity : quantities) {
      if (!span.held.Has(quantity)) continue;
      csv += blank;
      csv += ColumnName(quantity, centigrade);
      blank = " ";
    }
    for (const Quantity quantity : quantities) {
      constexpr int kDecimals = 2;
      csv += ',';
      if (values.Knows(quantity)) csv += FormatFixed(ShownValue(quantity, values[quantity], units), kDecimals);
    }
    csv += "\r\n";
  };
  view.history.Visit(range, [&](const Span& span) {
    if (span.last < range.from || span.first > range.to) return;
    if (span.first == span.last) {
      row(span, "reading", span.lowest);
    } else {
      row(span, "lowest", span.lowest);
      row(span, "highest", span.highest);
    }
  });
  return csv;
}

std::string VerdictCsv(const VerdictHistory& verdicts, TimeRange range, const LocalTimeOf& local_time) {
  std::string csv = "time,until,source,verdict,reasons,explanation\r\n";
  verdicts.Visit(range, [&](const RecordedVerdict& verdict) {
    csv += FormatIso8601(local_time(verdict.first)) + ',' + FormatIso8601(local_time(verdict.last)) + ',';
    csv += Name(verdict.source);
    csv += verdict.safe ? ",safe," : ",unsafe,";
    csv += Quoted(verdict.reasons) + ',' + Quoted(verdict.explanation) + "\r\n";
  });
  return csv;
}

}  // namespace orvalis
