#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "config/station.h"
#include "history/history.h"
#include "history/verdict_bands.h"
#include "network/http/resources.h"
#include "verdict/observation.h"

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

/// The curves, the conditions and the verdicts of a stretch; docs/network.md describes the fields.
[[nodiscard]] std::string HistoryJson(const HistoryView& recorded, const CurveRequest& request, const Station& station);

/// The resource with the curves.
class Curves {
 public:
  struct Parts {
    std::function<const Observation&()> observe;  ///< the account of now
    std::function<std::int64_t()> tick;           ///< milliseconds since the system started
    std::function<HistoryView()> recorded;
    const Station& station;
  };

  explicit Curves(Parts parts) : parts_(std::move(parts)) {}
  Curves(const Curves&) = delete;
  Curves& operator=(const Curves&) = delete;

  /// Adds the resource; it uses this object.
  void AddTo(Resources& resources);

 private:
  [[nodiscard]] HttpResponse Answer(const HttpRequest& request);
  /// Whether curves may be computed now.
  [[nodiscard]] bool TakeTurn();

  Parts parts_;
  std::int64_t turns_second_ = 0;  ///< of the tick
  int turns_ = 0;                  ///< in that second
};

}  // namespace orvalis::network
