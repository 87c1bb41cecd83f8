#include "station_memory.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "answer.h"
#include "event_set.h"

namespace orvalis::indi {
namespace {

constexpr const char* kUnreadable = "unreadable";
constexpr std::size_t kUuidLength = 36;

bool WriteWhole(const std::string& path, const std::string& text) {
  const int number = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
  if (number < 0) return false;
  const Descriptor file(number);
  return write(number, text.data(), text.size()) == static_cast<ssize_t>(text.size()) && fsync(number) == 0;
}

}  // namespace

StationMemory::StationMemory(const std::string& device) {
  const char* home = std::getenv("HOME");
  folder_ = std::string(home != nullptr ? home : "") + "/.indi";
  path_ = folder_ + "/" + device + "_station";
}

std::string StationMemory::Read() const {
  const int number = open(path_.c_str(), O_RDONLY | O_CLOEXEC);
  if (number < 0) return errno == ENOENT ? "" : kUnreadable;
  const Descriptor file(number);
  std::array<char, kUuidLength> text{};
  const ssize_t length = read(number, text.data(), text.size());
  std::string uuid(text.data(), length > 0 ? static_cast<std::size_t>(length) : 0);
  return IsUuid(uuid) ? uuid : kUnreadable;
}

std::string StationMemory::Write(const std::string& uuid) const {
  if (uuid.empty()) return unlink(path_.c_str()) == 0 || errno == ENOENT ? "" : std::strerror(errno);
  mkdir(folder_.c_str(), 0755);  // that it could not be made shows below
  const std::string fresh = path_ + ".new";
  if (WriteWhole(fresh, uuid + "\n") && std::rename(fresh.c_str(), path_.c_str()) == 0) return "";
  return std::strerror(errno);
}

}  // namespace orvalis::indi
