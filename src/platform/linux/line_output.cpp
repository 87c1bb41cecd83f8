#include "platform/linux/line_output.h"

#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace orvalis {

void LineOutput::Write(const std::string& line) {
  std::string bytes = line + '\n';
  pollfd writable{.fd = descriptor_, .events = POLLOUT, .revents = 0};
  // A pipe that is ready takes PIPE_BUF bytes without waiting; no line is that long.
  if (poll(&writable, 1, 0) != 1 || (writable.revents & POLLOUT) == 0) return;
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor_, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    bytes.erase(0, static_cast<std::size_t>(written));
  }
}

bool StandardErrorIsStandardOutput() {
  struct stat out {};
  struct stat error {};
  return fstat(STDOUT_FILENO, &out) == 0 && fstat(STDERR_FILENO, &error) == 0 && out.st_dev == error.st_dev &&
         out.st_ino == error.st_ino;
}

}  // namespace orvalis
