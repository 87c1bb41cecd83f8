#include "platform/linux/private_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

bool WriteAll(int descriptor, std::string_view text) {
  while (!text.empty()) {
    const ssize_t written = write(descriptor, text.data(), text.size());
    if (written < 0 && errno == EINTR) continue;
    if (written <= 0) return false;
    text.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace

void WritePrivateFile(const std::string& path, const std::string& text) {
  const std::string fresh = path + ".new";
  unlink(fresh.c_str());  // left over from a crash
  const int descriptor = open(fresh.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
  bool good = descriptor >= 0;
  if (good) {
    good = WriteAll(descriptor, text);
    good = close(descriptor) == 0 && good;
  }
  if (good && std::rename(fresh.c_str(), path.c_str()) == 0) return;
  const std::string reason = std::strerror(errno);
  unlink(fresh.c_str());
  throw RunTimeError(RunTimeError::kPathFileAccess, Message::Of("cannot write %1: %2").With(path, reason));
}

}  // namespace orvalis
