#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "unit/serial_adapter.h"

namespace orvalis {

/// Looks for ports in the kernel's own tree of devices, which is there without udev too.
class SysfsPortFinder : public PortFinder {
 public:
  /// Where the kernel's tree and the devices are.
  explicit SysfsPortFinder(std::filesystem::path sysfs = "/sys", std::filesystem::path devices = "/dev")
      : sysfs_(std::move(sysfs)), devices_(std::move(devices)) {}

  [[nodiscard]] std::optional<PresentPort> Find(const std::string& name) const override;
  [[nodiscard]] std::vector<PresentPort> Adapters() const override;

 private:
  /// The USB adapter that has the terminal of this name, "ttyUSB0"; an unknown one for others.
  [[nodiscard]] SerialAdapter AdapterOf(const std::string& terminal) const;

  std::filesystem::path sysfs_;
  std::filesystem::path devices_;
};

}  // namespace orvalis
