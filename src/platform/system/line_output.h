#pragma once

#include <string>

namespace orvalis {

/// Lines on standard output or standard error, which may be a terminal, a file, or a reader that stopped reading. It
/// never waits: a line that cannot be taken now is dropped, because the polling matters more. Implemented once per
/// operating system.
class LineOutput {
 public:
  enum class Stream { kOutput, kError };

  explicit LineOutput(Stream stream) : stream_(stream) {}

  void Write(const std::string& line);

 private:
  Stream stream_;
};

}  // namespace orvalis
