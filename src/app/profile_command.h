#pragma once

#include <iosfwd>
#include <optional>
#include <string>

#include "config/settings_store.h"

namespace orvalis {

/// `orvalis profile …`: access to the settings from a terminal.
struct ProfileCommand {
  enum class Verb { kList, kGet, kSet, kAcknowledge };
  Verb verb = Verb::kList;
  std::string key;
  std::string value;  ///< "-" reads the first line of standard input, which keeps a password out of the process list
  std::optional<std::string> subkey;
};

/// Runs `command` and returns the exit code: 0; 1 for a value that does not fit the key's type or that the setup dialog
/// would replace, or for a failing store; 2 for an unknown key. A store without the current layout is initialised
/// before the first value is set; otherwise the next start would reset it and lose the value.
[[nodiscard]] int RunProfileCommand(const ProfileCommand& command, SettingsStore& store, std::istream& in,
                                    std::ostream& out, std::ostream& error);

}  // namespace orvalis
