#pragma once

#include <string>

#include "base/event_list.h"
#include "config/settings_store.h"
#include "panel/panel_model.h"

namespace orvalis {

/// Shows on the panel and in the event list that the settings were destroyed, and what replaced them, until a person
/// acknowledges it here or from a terminal.
class SettingsLoss {
 public:
  struct Parts {
    SettingsStore& store;
    PanelModel& panel;
    EventList& events;
  };

  explicit SettingsLoss(const Parts& parts) : parts_(parts) {}

  /// Whether there is a loss that nobody has acknowledged.
  [[nodiscard]] bool IsOpen() const { return !notice_.empty(); }

  /// Call once a second: the notice may be acknowledged from outside. Throws RunTimeError when the store fails.
  void Watch();
  /// Throws RunTimeError when the store fails; the acknowledgement then holds for this run.
  void Acknowledge();

 private:
  Parts parts_;
  std::string notice_;        ///< as shown; "" when there is nothing to acknowledge
  std::string acknowledged_;  ///< the notice that was acknowledged on the panel
};

}  // namespace orvalis
