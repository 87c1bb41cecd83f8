#pragma once

#include <string>

#include "base/event_list.h"
#include "config/settings_store.h"
#include "panel/panel_model.h"

namespace orvalis {

/// Says on the panel and in the event list that the settings were destroyed, and what took their place, until a person
/// has acknowledged it, here or from a terminal.
class SettingsLoss {
 public:
  struct Parts {
    SettingsStore& store;
    PanelModel& panel;
    EventList& events;
  };

  explicit SettingsLoss(const Parts& parts) : parts_(parts) {}

  /// Once a second: the notice may be acknowledged from outside. Throws RunTimeError when the store fails.
  void Watch();
  /// Throws RunTimeError when the store fails; then the acknowledgement holds for this run.
  void Acknowledge();

 private:
  Parts parts_;
  std::string notice_;        ///< as shown; "" when there is nothing to acknowledge
  std::string acknowledged_;  ///< the notice that was acknowledged on the panel
};

}  // namespace orvalis
