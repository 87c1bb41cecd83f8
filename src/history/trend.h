#pragma once

#include <cstdint>

#include "history/history.h"

namespace orvalis {

/// Where a value has been going in the last 15 minutes.
enum class Trend : std::uint8_t {
  kNone,  ///< steady, or not known
  kRising,
  kFalling,
};

/// The values of which the panel shows the trend.
struct Trends {
  Trend sky = Trend::kNone;
  Trend ambient = Trend::kNone;
  Trend wind = Trend::kNone;

  bool operator==(const Trends&) const = default;
};

/// The trend of `quantity` at `now`, milliseconds since 1970-01-01 UTC: the mean of the last five minutes against that
/// of the first five of the last fifteen. Each needs values for half of its time. `before` is the trend so far: it goes
/// on until the difference is clearly below the one at which it began, so that no arrow flickers.
[[nodiscard]] Trend TrendOf(const History& history, Quantity quantity, std::int64_t now, Trend before);

/// All of them.
[[nodiscard]] Trends TrendsOf(const History& history, std::int64_t now, const Trends& before);

}  // namespace orvalis
