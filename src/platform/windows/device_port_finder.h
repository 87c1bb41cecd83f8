#pragma once

#include <optional>
#include <string>
#include <vector>

#include "unit/serial_adapter.h"

namespace orvalis {

/// Looks for ports in the device manager's list of devices that are plugged in.
class DevicePortFinder : public PortFinder {
 public:
  [[nodiscard]] std::optional<PresentPort> Find(const std::string& name) const override;
  [[nodiscard]] std::vector<PresentPort> Adapters() const override;
};

/// The adapter of a device's instance path: "USB\VID_0403&PID_6001\A50285BI",
/// "FTDIBUS\VID_0403+PID_6001+A50285BIA\0000", "USB\VID_10C4&PID_EA70&MI_00\6&1A2B3C&0&0000". What Windows made up in
/// the place of a serial number has a "&" and stands for the socket. Unknown for a device without these numbers.
[[nodiscard]] SerialAdapter AdapterOfInstance(const std::string& path);

}  // namespace orvalis
