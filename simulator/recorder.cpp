#include "recorder.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <stdexcept>

namespace orvalis_unit {

Recorder::Recorder(const std::string& path) : file_(path, std::ios::binary | std::ios::trunc) {
  if (!file_) throw std::runtime_error(path + ": " + std::strerror(errno));
}

void Recorder::Write(Time now, std::string_view event) {
  if (!file_.is_open()) return;
  std::array<char, 32> time{};
  std::snprintf(time.data(), time.size(), "%.3f ", ToSeconds(now));
  file_ << time.data() << event << std::endl;
}

}  // namespace orvalis_unit
