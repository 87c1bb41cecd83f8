#pragma once

#include <cstdint>
#include <optional>

#include "base/clock.h"
#include "base/event_list.h"
#include "base/tick_counter.h"
#include "unit/connector.h"

namespace orvalis {

/// Brings a lost connection back: two minutes after the link is found closed it connects again, and so on.
class AutoReconnect {
 public:
  /// How many ticks of one second a reconnect is waited for.
  static constexpr std::int16_t kWaitTicks = 120;

  struct Parts {
    SensorLink& link;
    Connector& connector;
    EventList& events;
    const Clock& clock;
  };

  explicit AutoReconnect(const Parts& parts) : parts_(parts) {}

  /// One tick of the second timer. `enabled` is the setting "AutoConnect".
  void Tick(bool enabled);

  /// Seconds until the next attempt, while one is waited for.
  [[nodiscard]] std::optional<std::int16_t> seconds_left() const;

 private:
  void Record(const char* what);

  Parts parts_;
  TickCounter waited_;
};

}  // namespace orvalis
