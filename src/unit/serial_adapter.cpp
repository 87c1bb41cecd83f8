#include "unit/serial_adapter.h"

#include <algorithm>
#include <utility>

namespace orvalis {

bool SameNumbers(const SerialAdapter& one, const SerialAdapter& other) {
  return one.vendor == other.vendor && one.product == other.product && one.serial == other.serial &&
         one.part == other.part;
}

SerialAdapter Distinguished(SerialAdapter adapter, const PortFinder& ports) {
  if (adapter.serial.empty()) return adapter;
  const std::vector<PresentPort> present = ports.Adapters();
  const auto same =
      std::ranges::count_if(present, [&](const PresentPort& port) { return SameNumbers(port.adapter, adapter); });
  if (same > 1) adapter.serial.clear();
  return adapter;
}

std::optional<std::string> FindAgain(const std::string& name, const SerialAdapter& lost, const PortFinder& ports) {
  const std::optional<PresentPort> by_name = ports.Find(name);
  if (!lost.known()) return by_name ? std::optional(name) : std::nullopt;

  std::vector<PresentPort> present = ports.Adapters();
  std::erase_if(present, [&](const PresentPort& port) {
    SerialAdapter other = port.adapter;
    if (lost.serial.empty()) other.serial.clear();
    return !SameNumbers(other, lost);
  });
  if (lost.serial.empty() || present.size() > 1) {
    std::erase_if(present, [&](const PresentPort& port) { return port.adapter.socket != lost.socket; });
  }
  if (present.size() != 1) return std::nullopt;
  return by_name && by_name->device == present.front().device ? name : present.front().device;
}

}  // namespace orvalis
