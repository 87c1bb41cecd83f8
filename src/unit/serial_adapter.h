#pragma once

#include <optional>
#include <string>
#include <vector>

namespace orvalis {

/// What tells one USB adapter from another. All of it is empty for a port of another kind.
struct SerialAdapter {
  std::string vendor;   ///< its number, "0403"
  std::string product;  ///< its number, "6001"
  std::string serial;   ///< its serial number; many adapters have none
  std::string part;     ///< which of its ports, where it has several
  std::string socket;   ///< where it is plugged in, as the system calls it

  [[nodiscard]] bool known() const { return !vendor.empty(); }
  [[nodiscard]] bool operator==(const SerialAdapter& other) const = default;
};

/// Whether two adapters have the same vendor, product, serial number and part, wherever they are plugged in.
[[nodiscard]] bool SameNumbers(const SerialAdapter& one, const SerialAdapter& other);

/// A port that this user may open now.
struct PresentPort {
  std::string device;  ///< the system's own name of it, whatever links lead there
  SerialAdapter adapter;
};

/// Looks which ports there are. It opens none of them: that alone may reset what is connected to it.
class PortFinder {
 public:
  virtual ~PortFinder() = default;
  /// The port that `name` means, as `SerialPort::Port` returns it; nothing while it does not exist, or may not be
  /// opened.
  [[nodiscard]] virtual std::optional<PresentPort> Find(const std::string& name) const = 0;
  /// The ports of all USB adapters.
  [[nodiscard]] virtual std::vector<PresentPort> Adapters() const = 0;
};

/// `adapter`, for `FindAgain`: without its serial number if another port has the same, as with copies, so that its
/// socket decides.
[[nodiscard]] SerialAdapter Distinguished(SerialAdapter adapter, const PortFinder& ports);

/// Where the port `name` is now, which had the adapter `lost`: the adapter with the same vendor, product and serial
/// number, or without a serial number the same socket; by its name alone when its adapter is not known. Nothing while
/// it is missing, and when several adapters would do. The result is `name` where that leads there.
[[nodiscard]] std::optional<std::string> FindAgain(const std::string& name, const SerialAdapter& lost,
                                                   const PortFinder& ports);

}  // namespace orvalis
