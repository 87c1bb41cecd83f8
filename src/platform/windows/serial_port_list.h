#pragma once

#include <vector>

#include "unit/serial_port_entry.h"

namespace orvalis {

/// The machine's serial ports, ordered by number, with the device manager's names.
[[nodiscard]] std::vector<SerialPortEntry> ListSerialPorts();

}  // namespace orvalis
