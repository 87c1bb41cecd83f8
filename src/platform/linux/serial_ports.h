#pragma once

#include <string>

#include "base/run_time_error.h"

namespace orvalis {

/// The device of a port name: "2" is the second classic port, /dev/ttyS1; a path is itself; anything else is a name
/// under /dev.
[[nodiscard]] std::string DevicePath(const std::string& port);

/// Why `device` could not be opened, with what to do about it. `reason` is the system's own word.
[[nodiscard]] RunTimeError OpenFailure(const std::string& device, const std::string& reason);

}  // namespace orvalis
