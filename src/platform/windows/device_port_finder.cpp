#include "platform/windows/device_port_finder.h"

#include "platform/windows/windows_error.h"

// After windows.h, whose types they use.
#include <devguid.h>
#include <initguid.h>
#include <setupapi.h>

#include <algorithm>
#include <array>
#include <memory>
#include <utility>

#include "base/run_time_error.h"
#include "platform/windows/com_port.h"

namespace orvalis {
namespace {

struct CloseDevices {
  using pointer = HDEVINFO;
  void operator()(HDEVINFO devices) const { SetupDiDestroyDeviceInfoList(devices); }
};

/// The name of a device's port, "COM3", or "".
std::string PortOf(HDEVINFO devices, SP_DEVINFO_DATA& device) {
  HKEY const key = SetupDiOpenDevRegKey(devices, &device, DICS_FLAG_GLOBAL, 0, DIREG_DEV, KEY_READ);
  if (key == INVALID_HANDLE_VALUE) return {};
  std::array<wchar_t, 64> name{};
  DWORD bytes = (name.size() - 1) * sizeof(wchar_t);
  const LSTATUS status =
      RegGetValueW(key, nullptr, L"PortName", RRF_RT_REG_SZ, nullptr, static_cast<void*>(name.data()), &bytes);
  RegCloseKey(key);
  return status == ERROR_SUCCESS ? Narrow(name.data()) : std::string();
}

/// Whether the system has a device of this name. The question opens nothing.
bool Exists(const std::string& port) {
  std::array<wchar_t, 512> target{};
  return QueryDosDeviceW(Wide(port).c_str(), target.data(), static_cast<DWORD>(target.size())) != 0;
}

}  // namespace

std::optional<PresentPort> DevicePortFinder::Find(const std::string& name) const {
  std::string port;
  try {
    port = ComPortName(name);
  } catch (const RunTimeError&) {
    return std::nullopt;  // no port has that name
  }
  if (!Exists(port)) return std::nullopt;
  const std::vector<PresentPort> adapters = Adapters();
  const auto found = std::ranges::find(adapters, port, &PresentPort::device);
  return found != adapters.end() ? *found : PresentPort{.device = port, .adapter = {}};
}

std::vector<PresentPort> DevicePortFinder::Adapters() const {
  std::vector<PresentPort> ports;
  HDEVINFO const listed = SetupDiGetClassDevsW(&GUID_DEVCLASS_PORTS, nullptr, nullptr, DIGCF_PRESENT);
  if (listed == INVALID_HANDLE_VALUE) return ports;
  const std::unique_ptr<HDEVINFO, CloseDevices> devices(listed);
  SP_DEVINFO_DATA device{};
  device.cbSize = sizeof(device);
  for (DWORD i = 0; SetupDiEnumDeviceInfo(listed, i, &device) != FALSE; ++i) {
    std::array<wchar_t, 512> path{};
    if (SetupDiGetDeviceInstanceIdW(listed, &device, path.data(), static_cast<DWORD>(path.size()), nullptr) == FALSE) {
      continue;
    }
    SerialAdapter adapter = AdapterOfInstance(Narrow(path.data()));
    std::string port = PortOf(listed, device);
    if (adapter.known() && !port.empty()) ports.push_back({.device = std::move(port), .adapter = std::move(adapter)});
  }
  return ports;
}

SerialAdapter AdapterOfInstance(const std::string& path) {
  constexpr std::size_t kDigits = 4;
  const auto number = [&path](const std::string& label) {
    const auto place = path.find(label);
    return place == std::string::npos ? std::string() : path.substr(place + label.size(), kDigits);
  };
  SerialAdapter adapter;
  adapter.vendor = number("VID_");
  adapter.product = number("PID_");
  adapter.part = number("MI_").substr(0, 2);
  if (!adapter.known() || adapter.product.empty()) return {};
  // What follows the product's number, up to the next backslash; with an interface's number in between.
  const std::string rest = path.substr(path.find("PID_") + kDigits + kDigits);
  const auto begin = rest.find_first_of("\\+");
  if (begin == std::string::npos) return {};
  const std::string own = rest.substr(begin + 1, rest.find('\\', begin + 1) - begin - 1);
  (own.find('&') == std::string::npos ? adapter.serial : adapter.socket) = own;
  return adapter;
}

}  // namespace orvalis
