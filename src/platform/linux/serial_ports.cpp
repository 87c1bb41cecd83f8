#include "platform/linux/serial_ports.h"

#include <fcntl.h>
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QDir>
#include <QFileInfo>
#include <QHash>
#include <QSerialPortInfo>
#include <QStringList>
#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <filesystem>
#include <system_error>

#include "unit/serial_port.h"

namespace orvalis {
namespace {

/// The device itself, which a name such as /dev/serial/by-id/… only points to.
std::string RealName(const std::string& device) {
  std::error_code error;
  const std::filesystem::path real = std::filesystem::canonical(device, error);
  return error ? device : real.string();
}

constexpr auto kNoneSelected = Message::Of("no serial port selected");
constexpr auto kNoSuchNumber = Message::Of("there is no serial port number %1");
constexpr auto kDoesNotExist =
    Message::Of("the port %1 does not exist; is the adapter plugged in, and is it the right port?");
constexpr auto kNotSerial = Message::Of("%1 is not a serial port");
constexpr auto kInUse = Message::Of("the port %1 is in use by another program");
constexpr auto kNoPermission = Message::Of("no permission for the port %1; %2");
constexpr auto kJoinGroup = Message::Of("join the group \"%1\" (sudo usermod -aG %1 $USER) and log in again");
constexpr auto kOfAnotherUser = Message::Of("it belongs to another user's program; run that program as this user");
constexpr auto kGiveToGroup = Message::Of(
    "give it to the group \"%1\" by a file /etc/udev/rules.d/99-serial.rules with the line SUBSYSTEM==\"tty\", "
    "KERNEL==\"%2\", GROUP=\"%1\", MODE=\"0660\", plug the adapter in again, and %3");

/// What opens a port that this user may not use.
Message PermissionHelp(const std::string& device, const struct stat& status) {
  const auto join = [](const std::string& group) { return kJoinGroup.With(group); };
  const ::group* owner = getgrgid(status.st_gid);
  constexpr mode_t kGroupMayUse = S_IRGRP | S_IWGRP;
  // Being in the administrator's group is a danger, and no group helps that has no rights itself.
  if (status.st_gid != 0 && owner != nullptr && (status.st_mode & kGroupMayUse) == kGroupMayUse) {
    return join(owner->gr_name);
  }
  if (device.starts_with("/dev/pts/")) return kOfAnotherUser;
  const std::string group = getgrnam("dialout") == nullptr && getgrnam("uucp") != nullptr ? "uucp" : "dialout";
  return kGiveToGroup.With(group, device.substr(device.rfind('/') + 1), join(group));
}

}  // namespace

std::vector<SerialPortEntry> ListSerialPorts() {
  QHash<QString, QString> lasting_names;
  const QDir by_id("/dev/serial/by-id");
  for (const QFileInfo& link : by_id.entryInfoList(QDir::System | QDir::Files | QDir::NoDotAndDotDot)) {
    lasting_names.insert(link.canonicalFilePath(), link.absoluteFilePath());
  }
  std::vector<SerialPortEntry> ports;
  for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) {
    const QString device = port.systemLocation();
    const QString name = lasting_names.value(device, device);
    QStringList about{port.manufacturer(), port.description()};
    about.removeAll("");
    if (name != device) about << QFileInfo(device).fileName();
    ports.push_back({.name = name.toStdString(), .description = about.join(", ").toStdString()});
  }
  return ports;
}

std::string DevicePath(const std::string& port) {
  const auto first = port.find_first_not_of(' ');
  if (first == std::string::npos) throw RunTimeError(RunTimeError::kFileNotFound, kNoneSelected);
  const std::string name = port.substr(first, port.find_last_not_of(' ') - first + 1);
  const bool is_number = std::all_of(name.begin(), name.end(), [](unsigned char c) { return std::isdigit(c) != 0; });
  if (is_number) {
    constexpr int kHighest = 256;
    int number = 0;
    const auto [end, error] = std::from_chars(name.data(), name.data() + name.size(), number);
    if (error != std::errc{} || number < 1 || number > kHighest) {
      throw RunTimeError(RunTimeError::kFileNotFound, kNoSuchNumber.With(name));
    }
    return "/dev/ttyS" + std::to_string(number - 1);
  }
  return name.find('/') == std::string::npos ? "/dev/" + name : name;
}

RunTimeError OpenFailure(const std::string& device, bool refused, const std::string& reason) {
  struct stat status {};
  if (stat(device.c_str(), &status) != 0) {
    return {RunTimeError::kFileNotFound, kDoesNotExist.With(device)};
  }
  if (!S_ISCHR(status.st_mode)) {
    return {RunTimeError::kDeviceUnavailable, kNotSerial.With(device)};
  }
  if (access(device.c_str(), R_OK | W_OK) != 0) {
    return {RunTimeError::kPermissionDenied, kNoPermission.With(device, PermissionHelp(RealName(device), status))};
  }
  // Character devices that are no terminals, such as /dev/null, open and then refuse every setting.
  const int descriptor = open(device.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  const int open_error = errno;
  if (descriptor >= 0) {
    const bool is_terminal = isatty(descriptor) == 1;
    close(descriptor);
    if (!is_terminal) return {RunTimeError::kDeviceUnavailable, kNotSerial.With(device)};
  }
  // Qt marks an open port by a file in this folder; where it may not write there, it opens none.
  constexpr const char* kLockFolder = "/run/lock";
  const bool locked = refused && access(kLockFolder, W_OK) == 0;
  if (locked || (descriptor < 0 && open_error == EBUSY)) {
    return {RunTimeError::kPortInUse, kInUse.With(device)};
  }
  return {RunTimeError::kDeviceUnavailable, kPortCannotBeOpened.With(device, reason)};
}

}  // namespace orvalis
