#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/message.h"

namespace orvalis {

/// A serial port of this machine, for a person to choose.
struct SerialPortEntry {
  std::string name;     ///< as the key "COM Port" takes it: a device path or a number
  Message description;  ///< what is plugged in there; may be empty
};

/// Tells whether a name, as the key "COM Port" takes it, means the port that is connected.
using IsConnectedPort = std::function<bool(const std::string& name)>;

/// `ports`, with the connected one described as that: under the name that it is `chosen` by, if it is that one, and as
/// `device` where the list does not know it at all.
[[nodiscard]] std::vector<SerialPortEntry> WithConnected(std::vector<SerialPortEntry> ports, const std::string& chosen,
                                                         const std::string& device,
                                                         const IsConnectedPort& is_connected);

}  // namespace orvalis
