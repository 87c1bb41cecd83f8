#pragma once

#include <string>

#include "config/settings_store.h"

namespace orvalis {

/// Who answers. The identifiers never change, so that a client that was told where one dome is cannot reach another.
struct Station {
  std::string name;                     ///< for people
  std::string uuid;                     ///< of the program with this profile
  std::string observing_conditions_id;  ///< of that Alpaca device
  std::string safety_monitor_id;        ///< likewise
};

/// Reads the identifiers and makes those that are missing. Throws RunTimeError when a new one cannot be stored; the
/// station has it all the same until the program ends.
void LoadIdentifiers(SettingsStore& store, Station& station);

/// A random (version 4) UUID.
[[nodiscard]] std::string MakeUuid();

}  // namespace orvalis
