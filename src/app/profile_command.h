#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "config/settings_store.h"

namespace orvalis {

/// `orvalis profile …`: the settings from a terminal.
struct ProfileCommand {
  enum class Verb { kList, kGet, kSet, kAcknowledge };
  Verb verb = Verb::kList;
  std::string key;
  std::string value;  ///< "-" takes the first line of standard input, so that a password stays out of the process list
  std::optional<std::string> subkey;
};

/// Carries `command` out. Returns the exit code: 0, 1 for a value that the key's type cannot hold or the setup dialog
/// would replace, or a store that fails, 2 for a key that does not exist. A store without the current layout is
/// initialised before the first value is set; it would be reset, and the value lost, at the program's next start.
[[nodiscard]] int RunProfileCommand(const ProfileCommand& command, SettingsStore& store, std::istream& in,
                                    std::ostream& out, std::ostream& error);

}  // namespace orvalis
