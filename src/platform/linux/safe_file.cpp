#include "platform/system/safe_file.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFile>
#include <cerrno>
#include <cstdio>
#include <cstring>

namespace orvalis::safe_file {
namespace {

bool Synchronise(const QString& name, int flags) {
  const int descriptor = open(QFile::encodeName(name).constData(), flags | O_CLOEXEC);
  if (descriptor < 0) return false;
  const bool done = fsync(descriptor) == 0;
  close(descriptor);
  return done;
}

}  // namespace

Stamp StampOf(const QString& path) {
  struct stat status {};
  if (stat(QFile::encodeName(path).constData(), &status) != 0) return {};
  return {.identity = status.st_ino,
          .size = status.st_size,
          .changed = status.st_mtim.tv_sec * 1'000'000'000 + status.st_mtim.tv_nsec};
}

int LastError() { return errno; }

void ClearLastError() { errno = 0; }

std::string ErrorText(int error) { return std::strerror(error); }

bool CanRead(const QString& file) { return access(QFile::encodeName(file).constData(), R_OK) == 0; }

bool CanWrite(const QString& folder) { return access(QFile::encodeName(folder).constData(), W_OK) == 0; }

bool RestrictToOwner(const QString& file) { return chmod(QFile::encodeName(file).constData(), S_IRUSR | S_IWUSR) == 0; }

bool Replace(const QString& from, const QString& to) {
  return std::rename(QFile::encodeName(from).constData(), QFile::encodeName(to).constData()) == 0;
}

bool Flush(const QString& file) { return Synchronise(file, O_RDONLY); }

void FlushNames(const QString& folder) { static_cast<void>(Synchronise(folder, O_RDONLY | O_DIRECTORY)); }

}  // namespace orvalis::safe_file
