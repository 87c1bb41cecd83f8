#include "platform/linux/systemd_manager.h"

#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <QtGlobal>
#include <algorithm>
#include <cstddef>
#include <cstring>

namespace orvalis {
namespace {

std::string Take(const char* variable) {
  std::string value = qgetenv(variable).toStdString();
  qunsetenv(variable);
  return value;
}

/// The value of `variable` where systemd means this process by it; it may be meant for another one, whose environment
/// we got.
std::string TakeOurs(const char* variable, const char* process_variable) {
  const std::string value = Take(variable);
  const std::string process = Take(process_variable);
  return process.empty() || process == std::to_string(getpid()) ? value : "";
}

std::chrono::microseconds TakeWatchdogInterval() {
  const std::string interval = TakeOurs("WATCHDOG_USEC", "WATCHDOG_PID");
  return std::chrono::microseconds(std::max(QByteArray::fromStdString(interval).toLongLong(), qlonglong{0}));
}

}  // namespace

SystemdManager::SystemdManager()
    : socket_(TakeOurs("NOTIFY_SOCKET", "SYSTEMD_EXEC_PID")), watchdog_interval_(TakeWatchdogInterval()) {
  alive_.callOnTimeout([this] { Send("WATCHDOG=1"); });
}

void SystemdManager::Started() {
  Send("READY=1");
  if (!Watches() || watchdog_interval_.count() == 0) return;
  alive_.start(std::chrono::duration_cast<std::chrono::milliseconds>(watchdog_interval_ / 2));
}

void SystemdManager::Send(const std::string& message) const {
  sockaddr_un address{.sun_family = AF_UNIX, .sun_path = {}};
  if (socket_.empty() || socket_.size() >= sizeof address.sun_path) return;
  std::memcpy(address.sun_path, socket_.data(), socket_.size());
  if (address.sun_path[0] == '@') address.sun_path[0] = '\0';
  const int descriptor = socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
  if (descriptor < 0) return;
  const std::size_t length = offsetof(sockaddr_un, sun_path) + socket_.size();
  // What does not arrive is said again: of a lost sign of life the next one follows in time.
  sendto(descriptor, message.data(), message.size(), MSG_DONTWAIT | MSG_NOSIGNAL,
         reinterpret_cast<const sockaddr*>(&address), static_cast<socklen_t>(length));
  close(descriptor);
}

bool ErrorsGoToJournal() {
  struct stat about {};
  if (fstat(STDERR_FILENO, &about) != 0) return false;
  return qgetenv("JOURNAL_STREAM").toStdString() == std::to_string(about.st_dev) + ":" + std::to_string(about.st_ino);
}

std::string JournalPrefix(int priority) { return ErrorsGoToJournal() ? "<" + std::to_string(priority) + ">" : ""; }

}  // namespace orvalis
