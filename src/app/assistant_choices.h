#pragma once

#include <string>

#include "config/settings.h"
#include "config/settings_store.h"
#include "reading/display_units.h"

namespace orvalis {

/// What a person chooses in the assistant, until it is stored all at once.
class AssistantChoices {
 public:
  /// Begins with the settings of now. `settings` are those in force, and change only with `Store`.
  AssistantChoices(SettingsStore& store, Settings& settings);

  Settings chosen;   ///< only what the assistant asks for is looked at
  std::string port;  ///< as the key "COM Port" takes it; "" leaves that as it is

  /// Whether it appeared by itself, on a store that is new. Then it proposes more.
  [[nodiscard]] bool first_start() const { return first_start_; }
  /// Proposes units, and what suits most new users. For a first start.
  void Propose(const DisplayUnits& units);

  /// Takes over what was changed elsewhere meanwhile, such as in the setup dialog. Returns whether anything was.
  bool Follow();
  /// Stores what was chosen and the mark that it was gone through, or nothing of it. Throws RunTimeError when the store
  /// fails; nothing has changed then.
  void Store();
  /// Stores only that it need not come again. Throws RunTimeError when the store fails.
  void Skip();

 private:
  SettingsStore& store_;
  Settings& settings_;
  bool first_start_;
  Settings seen_;          ///< the settings that the choices are based on
  std::string seen_port_;  ///< likewise
};

}  // namespace orvalis
