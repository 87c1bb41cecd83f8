#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "base/event_loop.h"
#include "config/station.h"
#include "history/history.h"
#include "network/http/event_channel.h"
#include "network/http/resources.h"
#include "network/observation/history_json.h"
#include "network/observation/metrics.h"
#include "verdict/observation.h"

namespace orvalis::network {

/// Tells the account of now in the notations that programs read, tells what was, and serves the page that shows both
/// to a person.
class ObservationService {
 public:
  /// What was recorded.
  struct Recorded {
    const History& history;
    bool demo;  ///< it is simulated
  };
  struct Parts {
    const EventLoop& loop;
    std::function<const Station&()> station;
    std::function<const Observation&()> observe;  ///< the account of now
    std::function<Recorded()> recorded;
    std::function<MetricCounters()> counters;
  };

  explicit ObservationService(Parts parts) : parts_(std::move(parts)) {}
  ObservationService(const ObservationService&) = delete;
  ObservationService& operator=(const ObservationService&) = delete;

  /// Adds what can be asked for. This must outlive all connections.
  void AddTo(Resources& resources);
  /// To be called with every new account; `news` tells that something is new in it besides its age. Sends it to the
  /// readers of the stream.
  void Note(const Observation& now, bool news);

 private:
  [[nodiscard]] HttpResponse Stream();
  [[nodiscard]] HttpResponse Curves(const HttpRequest& request);
  /// Whether curves may be computed now.
  [[nodiscard]] bool TakeTurn();

  Parts parts_;
  EventChannel channel_;
  std::int64_t published_at_ = 0;  ///< TickCount
  std::int64_t turns_second_ = 0;  ///< of TickCount
  int turns_ = 0;                  ///< in that second
};

}  // namespace orvalis::network
