#include "platform/linux/serial_ports.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cctype>
#include <charconv>

namespace orvalis {
namespace {

std::string GroupName(gid_t group) {
  const ::group* entry = getgrgid(group);
  return entry == nullptr ? std::to_string(group) : entry->gr_name;
}

}  // namespace

std::string DevicePath(const std::string& port) {
  const bool is_number =
      !port.empty() && std::all_of(port.begin(), port.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
  if (is_number) {
    int number = 0;
    std::from_chars(port.data(), port.data() + port.size(), number);
    return "/dev/ttyS" + std::to_string(number - 1);
  }
  return port.find('/') == std::string::npos ? "/dev/" + port : port;
}

RunTimeError OpenFailure(const std::string& device, const std::string& reason) {
  struct stat status {};
  if (stat(device.c_str(), &status) != 0) {
    return {RunTimeError::kFileNotFound,
            "the port " + device + " does not exist; is the adapter plugged in, and is it the right port?"};
  }
  if (!S_ISCHR(status.st_mode)) {
    return {RunTimeError::kDeviceUnavailable, device + " is not a serial port"};
  }
  if (access(device.c_str(), R_OK | W_OK) != 0) {
    return {RunTimeError::kPermissionDenied, "no permission for the port " + device + "; join the group \"" +
                                                 GroupName(status.st_gid) + "\" (sudo usermod -aG " +
                                                 GroupName(status.st_gid) + " $USER) and log in again"};
  }
  // Character devices that are no terminals, such as /dev/null, open and then refuse every setting.
  const int descriptor = open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor >= 0) {
    const bool is_terminal = isatty(descriptor) == 1;
    close(descriptor);
    if (!is_terminal) return {RunTimeError::kDeviceUnavailable, device + " is not a serial port"};
    return {RunTimeError::kPortInUse, "the port " + device + " is in use by another program"};
  }
  if (errno == EBUSY) return {RunTimeError::kPortInUse, "the port " + device + " is in use by another program"};
  return {RunTimeError::kDeviceUnavailable, "the port " + device + " cannot be opened: " + reason};
}

}  // namespace orvalis
