#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "sensor_unit.h"

namespace orvalis_unit {

struct ConsoleReply {
  std::string text;            // "ok ..." or "error ..."; empty for an empty line
  std::optional<double> drop;  // seconds for which the line is to be dropped
  bool quit = false;
};

// Executes one line of standard input. docs/simulator.md lists the commands.
ConsoleReply RunConsoleLine(std::string_view line, SensorUnit& unit, Time now);

}  // namespace orvalis_unit
