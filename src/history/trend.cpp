#include "history/trend.h"

#include <algorithm>
#include <optional>

namespace orvalis {
namespace {

constexpr std::int64_t kMinute = 60'000;
constexpr std::int64_t kLookBack = 15 * kMinute;
constexpr std::int64_t kPart = 5 * kMinute;
/// How much of a part has to be known.
constexpr std::int64_t kNeeded = kPart / 2;
/// An arrow goes at this share of the difference at which it comes.
constexpr double kHysteresis = 0.75;

/// The smallest difference that is no noise. The sky's temperature varies with every cloudlet, the wind with each gust.
double SmallestDifference(Quantity quantity) {
  switch (quantity) {
    case Quantity::kSky:
      return 1.0;  // °C
    case Quantity::kWind:
      return 2.0;  // miles per hour
    default:
      return 0.5;  // °C
  }
}

/// The mean over `range`; nothing when too little of it is known. Each value counts for the time until the next.
std::optional<double> MeanOf(const History& history, Quantity quantity, TimeRange range) {
  double sum = 0;
  std::int64_t known = 0;
  std::optional<Span> last;
  const auto count = [&](std::int64_t until) {
    if (!last || !last->lowest.Knows(quantity) || last->held.Has(quantity)) return;
    const std::int64_t from = std::max(last->first, range.from);
    const std::int64_t to = std::min({until, last->last + kLongestStepMs, range.to});
    if (to <= from) return;
    const auto weight = to - from;
    sum += (last->lowest[quantity] + last->highest[quantity]) / 2.0 * static_cast<double>(weight);
    known += weight;
  };
  history.Visit(range, [&](const Span& span) {
    count(span.first);
    last = span;
  });
  count(range.to);
  if (known < kNeeded) return std::nullopt;
  return sum / static_cast<double>(known);
}

}  // namespace

Trend TrendOf(const History& history, Quantity quantity, std::int64_t now, Trend before) {
  const auto early = MeanOf(history, quantity, {now - kLookBack, now - kLookBack + kPart});
  const auto late = MeanOf(history, quantity, {now - kPart, now});
  if (!early || !late) return Trend::kNone;
  const double change = *late - *early;
  const auto beyond = [&](double difference, Trend direction) {
    return difference >= SmallestDifference(quantity) * (before == direction ? kHysteresis : 1);
  };
  if (beyond(change, Trend::kRising)) return Trend::kRising;
  return beyond(-change, Trend::kFalling) ? Trend::kFalling : Trend::kNone;
}

Trends TrendsOf(const History& history, std::int64_t now, const Trends& before) {
  return {.sky = TrendOf(history, Quantity::kSky, now, before.sky),
          .ambient = TrendOf(history, Quantity::kAmbient, now, before.ambient),
          .wind = TrendOf(history, Quantity::kWind, now, before.wind)};
}

}  // namespace orvalis
