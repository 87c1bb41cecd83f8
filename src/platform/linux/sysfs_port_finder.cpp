#include "platform/linux/sysfs_port_finder.h"

#include <sys/stat.h>
#include <unistd.h>

#include <fstream>
#include <system_error>

namespace orvalis {
namespace {

namespace fs = std::filesystem;

/// The first line of a file, or "".
std::string LineOf(const fs::path& file) {
  std::ifstream in(file);
  std::string line;
  std::getline(in, line);
  return line;
}

/// udev creates a device first and gives it to its group a moment later.
bool MayBeOpened(const fs::path& device) {
  struct stat status {};
  return stat(device.c_str(), &status) == 0 && S_ISCHR(status.st_mode) && access(device.c_str(), R_OK | W_OK) == 0;
}

}  // namespace

std::optional<PresentPort> SysfsPortFinder::Find(const std::string& name) const {
  std::error_code missing;
  const fs::path device = fs::canonical(name, missing);
  if (missing || !MayBeOpened(device)) return std::nullopt;
  return PresentPort{.device = device, .adapter = AdapterOf(device.filename())};
}

std::vector<PresentPort> SysfsPortFinder::Adapters() const {
  std::vector<PresentPort> ports;
  std::error_code error;
  for (const fs::directory_entry& entry : fs::directory_iterator(sysfs_ / "class/tty", error)) {
    const std::string terminal = entry.path().filename();
    SerialAdapter adapter = AdapterOf(terminal);
    const fs::path device = devices_ / terminal;
    if (adapter.known() && MayBeOpened(device)) ports.push_back({.device = device, .adapter = std::move(adapter)});
  }
  return ports;
}

SerialAdapter SysfsPortFinder::AdapterOf(const std::string& terminal) const {
  const fs::path link = sysfs_ / "class/tty" / terminal / "device";
  std::error_code error;
  if (!fs::exists(link, error)) return {};  // most are consoles
  const fs::path device = fs::canonical(link, error);
  if (error) return {};
  // The terminal's device is the interface of the adapter that it belongs to, or lies right below it.
  for (const fs::path& interface : {device, device.parent_path()}) {
    std::string number = LineOf(interface / "bInterfaceNumber");
    if (number.empty()) continue;
    const fs::path adapter = interface.parent_path();
    return {.vendor = LineOf(adapter / "idVendor"),
            .product = LineOf(adapter / "idProduct"),
            .serial = LineOf(adapter / "serial"),
            .part = number + "." + LineOf(device / "port_number"),
            .socket = adapter};
  }
  return {};
}

}  // namespace orvalis
