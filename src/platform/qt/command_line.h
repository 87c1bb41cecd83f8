#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "app/profile_command.h"

namespace orvalis {

/// What the command line asks for.
struct CommandLine {
  enum class Action { kRun, kProfile, kVersion, kHelp };

  Action action = Action::kRun;
  bool automation = false;  ///< started for a client, not by a person
  bool headless = false;
  bool json = false;
  bool demo = false;
  std::optional<std::string> port;
  std::optional<std::string> profile_folder;
  std::optional<std::string> language;  ///< of the windows, "de"; the locale's if none
  std::optional<std::string> picture;   ///< write a picture of the panel here after the first reading, then exit
  ProfileCommand profile;
};

/// Why a command line is invalid, in one line.
struct CommandLineError {
  std::string text;
};

/// `arguments` begin with the program's name. An executable without windows is always headless.
[[nodiscard]] std::variant<CommandLine, CommandLineError> ParseCommandLine(const std::vector<std::string>& arguments,
                                                                           bool has_windows);

/// What the system's side of the program understands besides.
struct ServiceUsage {
  std::vector<std::string> synopsis;  ///< what follows the program's name
  std::string options;                ///< lines of the usage
};

/// `has_windows` tells which of the two executables it is.
[[nodiscard]] std::string Usage(bool has_windows, const ServiceUsage& service);

}  // namespace orvalis
