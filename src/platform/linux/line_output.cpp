#include "platform/system/line_output.h"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

namespace orvalis {

void LineOutput::Write(const std::string& line) {
  const int descriptor = stream_ == Stream::kOutput ? STDOUT_FILENO : STDERR_FILENO;
  std::string bytes = line + '\n';
  pollfd writable{.fd = descriptor, .events = POLLOUT, .revents = 0};
  // A pipe that is ready takes PIPE_BUF bytes without waiting; no line is that long.
  if (poll(&writable, 1, 0) != 1 || (writable.revents & POLLOUT) == 0) return;
  while (!bytes.empty()) {
    const ssize_t written = write(descriptor, bytes.data(), bytes.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return;
    bytes.erase(0, static_cast<std::size_t>(written));
  }
}

}  // namespace orvalis
