#pragma once

#include <string>

#include "base/run_time_error.h"

namespace orvalis {

/// The device of a port name: "2" is the second classic port, /dev/ttyS1; a path is itself; anything else is a name
/// under /dev. Throws RunTimeError kFileNotFound for a number that no port has.
[[nodiscard]] std::string DevicePath(const std::string& port);

/// Why `device` could not be opened, with what to do about it. `refused` tells that Qt was not let in although the user
/// may use the device, `reason` is the system's own word.
[[nodiscard]] RunTimeError OpenFailure(const std::string& device, bool refused, const std::string& reason);

}  // namespace orvalis
