#include "unit/auto_reconnect.h"

#include <string>

namespace orvalis {

void AutoReconnect::Tick(bool enabled) {
  if (parts_.connector.connecting()) return;
  std::string& caption = parts_.panel.connect.caption;
  if (parts_.link.Connected()) {
    caption = "Connected";
    waited_.Reset();
    return;
  }
  if (!enabled) {
    caption = "Click to connect";
    waited_.Reset();
    return;
  }
  if (waited_.ticks() == 0) Record("Not connected, AutoConnect enabled, starting wait to reconnect: ");
  waited_.Raise();
  caption = "AutoConnect Enabled Will attempt reconnect in " + std::to_string(kWaitTicks - waited_.ticks()) + " secs";
  if (waited_.ticks() < kWaitTicks) return;
  waited_.Reset();
  parts_.connector.Connect(
      [this](bool connected) { Record(connected ? "Reconnect succeeded: " : "Reconnect failed: "); });
}

void AutoReconnect::Record(const char* what) { parts_.events.Record(what + FormatEventTime(parts_.clock.LocalNow())); }

}  // namespace orvalis
