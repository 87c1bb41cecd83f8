#pragma once

#include <vector>

#include "unit/serial_port_entry.h"

namespace orvalis {

/// The serial ports that the machine has now, with what is plugged in there. A device that has a name below
/// /dev/serial/by-id is listed by it: it stays the same when other adapters come and go.
[[nodiscard]] std::vector<SerialPortEntry> ListSerialPorts();

}  // namespace orvalis
