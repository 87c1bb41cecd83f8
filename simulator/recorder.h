#pragma once

#include <fstream>
#include <string>
#include <string_view>

#include "text.h"

namespace orvalis_unit {

// Records what happens on the line, one event per line, flushed at once so that another program can follow it.
// docs/simulator.md lists the events.
class Recorder {
 public:
  // Records nothing.
  Recorder() = default;

  // Truncates `path`. Throws std::runtime_error when it cannot be written.
  explicit Recorder(const std::string& path);

  void Write(Time now, std::string_view event);

 private:
  std::ofstream file_;
};

}  // namespace orvalis_unit
