#include "unit/auto_reconnect.h"

#include <string>

namespace orvalis {

void AutoReconnect::Tick(bool enabled) {
  if (parts_.connector.connecting()) return;
  if (parts_.link.Connected()) adapter_.NoteConnected();
  if (parts_.link.Connected() || !enabled) {
    waited_.Reset();
    return;
  }
  if (waited_.ticks() == 0) Record("Not connected, AutoConnect enabled, starting wait to reconnect: ");
  waited_.Raise();
  if (waited_.ticks() == kWaitTicks) {
    waited_.Reset();
    Connect(adapter_.Place());
  } else if (const auto port = adapter_.DueAt()) {
    parts_.events.Record("the adapter is there again, at " + *port);
    Connect(port);
  }
}

void AutoReconnect::Connect(const std::optional<std::string>& port) {
  parts_.connector.Connect(
      [this](bool connected) {
        if (connected) adapter_.NoteConnected();
        Record(connected ? "Reconnect succeeded: " : "Reconnect failed: ");
      },
      port);
}

std::optional<std::int16_t> AutoReconnect::seconds_left() const {
  if (waited_.ticks() == 0) return std::nullopt;
  return static_cast<std::int16_t>(kWaitTicks - waited_.ticks());
}

void AutoReconnect::Record(const char* what) { parts_.events.Record(what + FormatEventTime(parts_.clock.LocalNow())); }

}  // namespace orvalis
