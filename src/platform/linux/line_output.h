#pragma once

#include <string>

namespace orvalis {

/// Lines on a file descriptor that may belong to a terminal, a file, or a reader who stopped reading. It never waits:
/// a line that cannot be taken now is dropped, because the polling matters more.
class LineOutput {
 public:
  explicit LineOutput(int descriptor) : descriptor_(descriptor) {}

  void Write(const std::string& line);

 private:
  int descriptor_;
};

/// Whether standard output and standard error go to the same place, so that saying a thing on both says it twice.
[[nodiscard]] bool StandardErrorIsStandardOutput();

}  // namespace orvalis
