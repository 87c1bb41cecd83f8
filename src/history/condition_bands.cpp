#include "history/condition_bands.h"

#include <algorithm>
#include <optional>

namespace orvalis {

std::string_view Name(Condition condition) {
  switch (condition) {
    case Condition::kClear:
      return "clear";
    case Condition::kPartlyCloudy:
      return "partly cloudy";
    case Condition::kCloudy:
      return "cloudy";
    case Condition::kRain:
      return "rain";
    case Condition::kUnsafe:
      return "unsafe";
  }
  return "";
}

void AddBand(std::vector<TimeRange>& bands, TimeRange band, std::int64_t column_ms) {
  if (!bands.empty() && band.from - bands.back().to <= column_ms) {
    bands.back().to = band.to;
  } else {
    bands.push_back(band);
  }
}

std::vector<TimeRange> ConditionBands(const History& history, Condition condition, TimeRange range, int columns) {
  const std::int64_t column_ms = (range.to - range.from) / std::max(1, columns);
  std::vector<TimeRange> bands;
  bool under_way = false;
  std::optional<std::int64_t> end;
  const auto add = [&](std::int64_t from, std::int64_t to) {
    AddBand(bands, {.from = std::clamp(from, range.from, range.to), .to = std::clamp(to, range.from, range.to)},
            column_ms);
  };
  history.Visit(range, [&](const Span& span) {
    // A condition lasts until it is known to have ended.
    if (under_way && span.first - *end <= kLongestStepMs) add(*end, span.first);
    under_way = span.conditions.Has(condition);
    end = span.last;
    if (under_way && span.last >= range.from && span.first <= range.to) add(span.first, span.last);
  });
  return bands;
}

}  // namespace orvalis
