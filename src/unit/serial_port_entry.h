#pragma once

#include <string>

namespace orvalis {

/// A serial port of this machine, for a person to choose.
struct SerialPortEntry {
  std::string name;         ///< as the key "COM Port" takes it: a device path or a number
  std::string description;  ///< what is plugged in there; may be empty
};

}  // namespace orvalis
