#pragma once

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "unit/serial_adapter.h"

namespace orvalis::test {

/// The ports that the test plugs in.
class FakePortFinder : public PortFinder {
 public:
  std::vector<PresentPort> present;

  [[nodiscard]] std::optional<PresentPort> Find(const std::string& name) const override {
    const auto found = std::ranges::find(present, name, &PresentPort::device);
    return found != present.end() ? std::optional(*found) : std::nullopt;
  }
  [[nodiscard]] std::vector<PresentPort> Adapters() const override {
    std::vector<PresentPort> adapters = present;
    std::erase_if(adapters, [](const PresentPort& port) { return !port.adapter.known(); });
    return adapters;
  }
};

}  // namespace orvalis::test
