#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/clock.h"
#include "base/event_list.h"
#include "base/tick_counter.h"
#include "unit/connector.h"
#include "unit/lost_adapter.h"
#include "unit/serial_adapter.h"

namespace orvalis {

/// Brings a lost connection back: two minutes after the link is found closed it connects again, and so on. An adapter
/// that was lost and is there again is connected to at once, at whatever port it is now.
class AutoReconnect {
 public:
  /// How many ticks of one second a reconnect is waited for.
  static constexpr std::int16_t kWaitTicks = 120;

  struct Parts {
    SensorLink& link;
    Connector& connector;
    EventList& events;
    const Clock& clock;
    const PortFinder& ports;
  };

  explicit AutoReconnect(const Parts& parts) : parts_(parts), adapter_({.link = parts.link, .ports = parts.ports}) {}

  /// One tick of the second timer. `enabled` is the setting "AutoConnect".
  void Tick(bool enabled);

  /// Seconds until the next attempt, while one is waited for.
  [[nodiscard]] std::optional<std::int16_t> seconds_left() const;

 private:
  /// `port`: where the lost adapter is, if it is found.
  void Connect(const std::optional<std::string>& port);
  void Record(const char* what);

  Parts parts_;
  LostAdapter adapter_;
  TickCounter waited_;
};

}  // namespace orvalis
