#pragma once

#include <span>
#include <stdexcept>
#include <string>
#include <string_view>

#include "sensor_unit.h"

namespace orvalis_unit {

struct Options {
  std::string link;      // empty: no link
  std::string scenario;  // empty: the built-in night
  std::string record;    // empty: no record
  bool reads_commands = false;
  bool shows_help = false;
  bool shows_version = false;
  SensorUnit::Configuration unit;
};

// An invalid command line.
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// `arguments` without the program's name. Throws UsageError. Everything after --help or --version is ignored.
Options ParseOptions(std::span<const std::string_view> arguments);

std::string_view HelpText();

}  // namespace orvalis_unit
