#include "unit/auto_reconnect.h"

#include <string>

namespace orvalis {

void AutoReconnect::Tick(bool enabled) {
  if (parts_.connector.connecting()) return;
  if (parts_.link.Connected() || !enabled) {
    waited_.Reset();
    return;
  }
  if (waited_.ticks() == 0) Record("Not connected, AutoConnect enabled, starting wait to reconnect: ");
  waited_.Raise();
  if (waited_.ticks() < kWaitTicks) return;
  waited_.Reset();
  parts_.connector.Connect(
      [this](bool connected) { Record(connected ? "Reconnect succeeded: " : "Reconnect failed: "); });
}

std::optional<std::int16_t> AutoReconnect::seconds_left() const {
  if (waited_.ticks() == 0) return std::nullopt;
  return static_cast<std::int16_t>(kWaitTicks - waited_.ticks());
}

void AutoReconnect::Record(const char* what) { parts_.events.Record(what + FormatEventTime(parts_.clock.LocalNow())); }

}  // namespace orvalis
