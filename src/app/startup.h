#pragma once

#include <cstdint>
#include <functional>

#include "app/leftovers.h"
#include "app/panel_window.h"
#include "app/program_flags.h"
#include "app/setup_routine.h"
#include "base/interval_timer.h"
#include "config/settings.h"
#include "config/settings_store.h"
#include "config/utility_object.h"
#include "logs/log_writer.h"
#include "unit/connector.h"

namespace orvalis {

/// Brings the program up and down, in fixed orders.
class Startup {
 public:
  struct Parts {
    ProgramFlags& flags;
    UtilityObject& utility;
    SettingsStore& store;
    Settings& settings;
    PanelWindow* window;  ///< none when headless
    ImmediateSwitches& switches;
    IntervalTimer& poll_timer;
    IntervalTimer& second_timer;
    Connector& connector;
    LogWriter& logs;
    Leftovers& leftovers;
    bool started_by_user = true;         ///< the platform's start mode
    bool auto_connect_override = false;  ///< connect and reconnect in this run, whatever the setting says
    std::function<bool()> demo_mode;     ///< whether the run makes its values up, for whatever reason
  };

  explicit Startup(const Parts& parts) : parts_(parts) {}

  /// Registers the driver, loads the settings, places and shows the panel, arms the timers and connects where that is
  /// wanted. Throws RunTimeError when the profile fails or holds a value that cannot be used: the program must not run.
  void Main();

  /// Stops the work, keeps the panel's place and closes the link. Never throws: the program ends in any case.
  void Shutdown() noexcept;

  /// Whether the link is to be connected again when it is lost.
  [[nodiscard]] bool AutoConnect() const { return parts_.auto_connect_override || parts_.settings.AutoConnect == 1; }

 private:
  void PlacePanel();
  void SaveState();

  Parts parts_;
};

}  // namespace orvalis
