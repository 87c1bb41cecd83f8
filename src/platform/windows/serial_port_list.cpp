#include "platform/windows/serial_port_list.h"

#include "platform/windows/windows_error.h"

// After windows.h, whose types they use.
#include <devguid.h>
#include <initguid.h>
#include <setupapi.h>

#include <algorithm>
#include <array>
#include <map>
#include <string>

namespace orvalis {
namespace {

/// The device manager's name of each port, "USB Serial Port (COM3)", by the port's name.
std::map<std::wstring, std::wstring> FriendlyNames() {
  std::map<std::wstring, std::wstring> names;
  HDEVINFO const devices = SetupDiGetClassDevsW(&GUID_DEVCLASS_PORTS, nullptr, nullptr, DIGCF_PRESENT);
  if (devices == INVALID_HANDLE_VALUE) return names;
  SP_DEVINFO_DATA device{};
  device.cbSize = sizeof(device);
  for (DWORD i = 0; SetupDiEnumDeviceInfo(devices, i, &device) != FALSE; ++i) {
    std::array<wchar_t, 256> text{};
    constexpr DWORD kRoom = (text.size() - 1) * sizeof(wchar_t);
    if (SetupDiGetDeviceRegistryPropertyW(devices, &device, SPDRP_FRIENDLYNAME, nullptr,
                                          reinterpret_cast<BYTE*>(text.data()), kRoom, nullptr) == FALSE) {
      continue;
    }
    const std::wstring friendly = text.data();
    const auto open = friendly.rfind(L'(');
    const auto close = friendly.rfind(L')');
    if (open == std::wstring::npos || close == std::wstring::npos || close < open) continue;
    names[friendly.substr(open + 1, close - open - 1)] = friendly;
  }
  SetupDiDestroyDeviceInfoList(devices);
  return names;
}

}  // namespace

std::vector<SerialPortEntry> ListSerialPorts() {
  std::map<int, SerialPortEntry> by_number;
  HKEY key = nullptr;
  if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, L"HARDWARE\\DEVICEMAP\\SERIALCOMM", 0, KEY_READ, &key) != ERROR_SUCCESS) {
    return {};
  }
  const auto friendly = FriendlyNames();
  for (DWORD i = 0;; ++i) {
    std::array<wchar_t, 256> device{};
    std::array<wchar_t, 64> port{};
    auto device_length = static_cast<DWORD>(device.size());
    DWORD port_bytes = (port.size() - 1) * sizeof(wchar_t);
    DWORD type = 0;
    const LSTATUS status = RegEnumValueW(key, i, device.data(), &device_length, nullptr, &type,
                                         reinterpret_cast<BYTE*>(port.data()), &port_bytes);
    if (status == ERROR_NO_MORE_ITEMS) break;
    const std::wstring name = port.data();
    if (status != ERROR_SUCCESS || type != REG_SZ || !name.starts_with(L"COM")) continue;
    const int number = static_cast<int>(std::wcstol(name.c_str() + 3, nullptr, 10));
    const auto known = friendly.find(name);
    by_number[number] = {.name = std::to_string(number),
                         .description = Narrow(known == friendly.end() ? name : known->second)};
  }
  RegCloseKey(key);
  std::vector<SerialPortEntry> ports;
  ports.reserve(by_number.size());
  for (auto& [number, entry] : by_number) ports.push_back(std::move(entry));
  return ports;
}

}  // namespace orvalis
