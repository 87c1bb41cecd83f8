#include "unit/serial_port_entry.h"

#include <algorithm>

namespace orvalis {

std::vector<SerialPortEntry> WithConnected(std::vector<SerialPortEntry> ports, const std::string& chosen,
                                           const std::string& device, const IsConnectedPort& is_connected) {
  const auto lists = [&ports](const auto& wanted) {
    return std::any_of(ports.begin(), ports.end(), [&](const SerialPortEntry& port) { return wanted(port.name); });
  };
  if (is_connected(chosen) && !lists([&](const std::string& name) { return name == chosen; })) {
    ports.push_back({.name = chosen, .description = {}});
  }
  if (is_connected(device) && !lists(is_connected)) ports.push_back({.name = device, .description = {}});
  for (SerialPortEntry& port : ports) {
    if (!is_connected(port.name)) continue;
    port.description = port.description.empty() ? Message(Message::Of("Connected"))
                                                : Message::Of("%1, connected").With(port.description);
  }
  return ports;
}

}  // namespace orvalis
