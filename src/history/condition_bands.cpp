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
    case Condition::kSafe:
      return "safe";
  }
  return "";
}

std::vector<TimeRange> ConditionBands(const History& history, Condition condition, TimeRange range, int columns) {
  const std::int64_t column_ms = (range.to - range.from) / std::max(1, columns);
  std::vector<TimeRange> bands;
  bool under_way = false;
  std::optional<std::int64_t> end;
  const auto add = [&](std::int64_t from, std::int64_t to) {
    from = std::clamp(from, range.from, range.to);
    to = std::clamp(to, range.from, range.to);
    if (!bands.empty() && from - bands.back().to <= column_ms) {
      bands.back().to = to;
    } else {
      bands.push_back({.from = from, .to = to});
    }
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
