#pragma once

#include <optional>
#include <string>
#include <variant>
#include <vector>

#include "config/profile_command.h"

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
  std::optional<std::string> picture;  ///< write a picture of the panel here after the first values, and end
  ProfileCommand profile;
};

/// A command line that makes no sense: why, in one line.
struct CommandLineError {
  std::string text;
};

/// `arguments` begin with the program's name.
[[nodiscard]] std::variant<CommandLine, CommandLineError> ParseCommandLine(const std::vector<std::string>& arguments);

/// What the system's side of the program understands besides, as lines of the usage.
struct ServiceUsage {
  std::string synopsis;
  std::string options;
};

[[nodiscard]] std::string Usage(const ServiceUsage& service);

}  // namespace orvalis
