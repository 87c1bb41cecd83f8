#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "config/station.h"
#include "history/history.h"

namespace orvalis::network {

/// A stretch of the history, and how finely it is wanted.
struct CurveRequest {
  static constexpr int kFewestPoints = 20;
  static constexpr int kMostPoints = 2'000;

  TimeRange range;
  int points = 0;  ///< of one curve, at most, `kFewestPoints` to `kMostPoints`

  bool operator==(const CurveRequest&) const = default;
};

/// The request in a query such as "from=-43200&points=400": seconds since 1970-01-01 UTC or, negative, before `now`
/// (ms since 1970-01-01 UTC). Without `from` and `to` it is the last 24 hours. More than is kept is cut off. Throws
/// std::invalid_argument with a text for the client.
[[nodiscard]] CurveRequest ReadCurveRequest(std::string_view query, std::int64_t now);

/// The curves and the conditions of a stretch; docs/network.md describes the fields. `demo` tells that the values are
/// simulated.
[[nodiscard]] std::string HistoryJson(const History& history, bool demo, const CurveRequest& request,
                                      const Station& station);

}  // namespace orvalis::network
