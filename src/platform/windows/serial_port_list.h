#pragma once

#include <vector>

#include "unit/serial_port_entry.h"

namespace orvalis {

/// The serial ports that the machine has now, by their numbers, with the name that the device manager shows.
[[nodiscard]] std::vector<SerialPortEntry> ListSerialPorts();

}  // namespace orvalis
