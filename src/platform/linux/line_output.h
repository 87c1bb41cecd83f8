#pragma once

#include <cstdint>
#include <string>

namespace orvalis {

/// Lines on a file descriptor that may belong to a terminal, a file, or a reader who stopped reading. It never waits:
/// a line that cannot be taken now is dropped and counted, because the polling matters more.
class LineOutput {
 public:
  explicit LineOutput(int descriptor) : descriptor_(descriptor) {}

  void Write(const std::string& line);
  [[nodiscard]] std::int64_t dropped() const { return dropped_; }

 private:
  int descriptor_;
  std::int64_t dropped_ = 0;
};

/// Whether standard output and standard error go to the same place, so that saying a thing on both says it twice.
[[nodiscard]] bool StandardErrorIsStandardOutput();

}  // namespace orvalis
