#include "pty_line.h"

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <termios.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <system_error>

namespace orvalis_unit {
namespace {

[[noreturn]] void Fail(const char* what) { throw std::system_error(errno, std::generic_category(), what); }

void MakeRaw(int fd) {
  termios mode{};
  if (tcgetattr(fd, &mode) != 0) Fail("tcgetattr");
  cfmakeraw(&mode);
  mode.c_cflag |= CREAD | CLOCAL;
  if (cfsetspeed(&mode, B9600) != 0 || tcsetattr(fd, TCSANOW, &mode) != 0) Fail("tcsetattr");
}

}  // namespace

PtyLine::PtyLine() : master_(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK)) {
  if (master_.Get() < 0) Fail("posix_openpt");
  if (grantpt(master_.Get()) != 0) Fail("grantpt");
  if (unlockpt(master_.Get()) != 0) Fail("unlockpt");
  std::array<char, 128> name{};
  if (ptsname_r(master_.Get(), name.data(), name.size()) != 0) Fail("ptsname_r");
  path_ = name.data();

  slave_ = UniqueFd(open(path_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  if (slave_.Get() < 0) Fail("open");
  MakeRaw(slave_.Get());

  // The line works without the watch, so a system without it is not an error.
  watch_ = UniqueFd(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
  if (inotify_add_watch(watch_.Get(), path_.c_str(), IN_OPEN | IN_CLOSE) < 0) watch_ = UniqueFd();
}

std::string PtyLine::Read() {
  std::array<char, 4096> bytes{};
  const ssize_t count = read(master_.Get(), bytes.data(), bytes.size());
  if (count >= 0) return {bytes.data(), static_cast<std::size_t>(count)};
  if (errno == EAGAIN || errno == EINTR) return {};
  Fail("read");
}

void PtyLine::Write(std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = write(master_.Get(), bytes.data(), bytes.size());
    if (count < 0 && errno == EINTR) continue;
    if (count <= 0) return;
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
}

std::vector<PtyLine::Use> PtyLine::TakeUse() {
  std::vector<Use> uses;
  alignas(inotify_event) std::array<char, 4096> events{};
  ssize_t count = 0;
  while ((count = read(watch_.Get(), events.data(), events.size())) > 0) {
    for (std::size_t at = 0; at < static_cast<std::size_t>(count);) {
      inotify_event event{};
      std::memcpy(&event, events.data() + at, sizeof event);
      if ((event.mask & IN_OPEN) != 0) uses.push_back(Use::kOpened);
      if ((event.mask & IN_CLOSE) != 0) uses.push_back(Use::kClosed);
      at += sizeof event + event.len;
    }
  }
  if (std::ranges::count(uses, Use::kClosed) != 0) ioctl(slave_.Get(), TIOCNXCL);
  return uses;
}

}  // namespace orvalis_unit
