#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "unit/sensor_link.h"
#include "unit/serial_adapter.h"

namespace orvalis {

/// Remembers the adapter that the unit is connected by, finds it again after it was lost, under any name, and says when
/// to connect to it.
class LostAdapter {
 public:
  struct Parts {
    SensorLink& link;
    const PortFinder& ports;
  };

  explicit LostAdapter(const Parts& parts) : parts_(parts) {}

  /// To be called once a second while the link is connected.
  void NoteConnected();
  /// To be called once a second while the link is not, and should be. Returns the port to connect to at once: where the
  /// lost adapter is, a few times with growing pauses, because it may come back before the unit can answer, or be
  /// loose.
  [[nodiscard]] std::optional<std::string> DueAt();
  /// Where the lost adapter is now, due or not.
  [[nodiscard]] std::optional<std::string> Place() const;

 private:
  Parts parts_;
  std::uint64_t session_ = 0;  ///< whose adapter is known; of no connection at first
  SerialAdapter adapter_;
  int steady_seconds_ = 0;    ///< how long the connection has held
  std::size_t attempts_ = 0;  ///< since one held
  int waited_ = 0;            ///< seconds since the last attempt
};

}  // namespace orvalis
