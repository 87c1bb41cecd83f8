#pragma once

#include <cstdint>

#include "base/clock.h"
#include "base/event_list.h"
#include "base/tick_counter.h"
#include "panel/panel_model.h"
#include "unit/connector.h"

namespace orvalis {

/// Brings a lost connection back: two minutes after the link is found closed it connects again, and so on. It also
/// keeps the caption of the connect control.
class AutoReconnect {
 public:
  /// How many ticks of one second a reconnect is waited for.
  static constexpr std::int16_t kWaitTicks = 120;

  struct Parts {
    SensorLink& link;
    Connector& connector;
    PanelModel& panel;
    EventList& events;
    const Clock& clock;
  };

  explicit AutoReconnect(const Parts& parts) : parts_(parts) {}

  /// One tick of the second timer. `enabled` is the setting "AutoConnect".
  void Tick(bool enabled);

 private:
  void Record(const char* what);

  Parts parts_;
  TickCounter waited_;
};

}  // namespace orvalis
