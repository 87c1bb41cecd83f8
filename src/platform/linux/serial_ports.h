#pragma once

#include <string>
#include <vector>

#include "base/run_time_error.h"
#include "unit/serial_port_entry.h"

namespace orvalis {

/// The serial ports that the machine has now, with what is plugged in there. A device that has a name below
/// /dev/serial/by-id is listed by it: it stays the same when other adapters come and go.
[[nodiscard]] std::vector<SerialPortEntry> ListSerialPorts();

/// The device of a port name: "2" is the second classic port, /dev/ttyS1; a path is itself; anything else is a name
/// under /dev. Throws RunTimeError kFileNotFound for a number that no port has.
[[nodiscard]] std::string DevicePath(const std::string& port);

/// Why `device` could not be opened, and what to do about it. `refused`: Qt got no access although the user may use the
/// device. `reason` is the system's text.
[[nodiscard]] RunTimeError OpenFailure(const std::string& device, bool refused, const std::string& reason);

}  // namespace orvalis
