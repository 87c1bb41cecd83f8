#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/clock.h"

namespace orvalis {

/// How much an event matters, for the system's log.
enum class EventLevel { kError, kWarning, kNotice };

/// One event, for a person to read.
struct Event {
  CivilTime time;
  std::string text;
  EventLevel level = EventLevel::kNotice;
};

/// Recent events: connections made and lost, errors, alerts. Bounded; the oldest are dropped.
class EventList {
 public:
  static constexpr std::size_t kKept = 500;
  using Listener = std::function<void(const Event&)>;

  explicit EventList(const Clock& clock) : clock_(clock) {}

  void Record(std::string text, EventLevel level = EventLevel::kNotice) {
    events_.push_back({clock_.LocalNow(), std::move(text), level});
    if (events_.size() > kKept) events_.pop_front();
    for (const Listener& listener : listeners_) listener(events_.back());
  }

  /// `listener` is called for every later event. It must not record another one.
  void Listen(Listener listener) { listeners_.push_back(std::move(listener)); }

  [[nodiscard]] const std::deque<Event>& events() const { return events_; }

 private:
  const Clock& clock_;
  std::deque<Event> events_;
  std::vector<Listener> listeners_;
};

}  // namespace orvalis
