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

/// Starts and stops the program in a fixed order.
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
    bool started_by_user = true;         ///< from the platform's start mode
    bool auto_connect_override = false;  ///< connect and reconnect in this run, regardless of the setting
    std::function<bool()> demo_mode;     ///< whether this run is in demo mode, for any reason
  };

  explicit Startup(const Parts& parts) : parts_(parts) {}

  /// Registers the driver, loads the settings, places and shows the panel, starts the timers and connects if
  /// configured. Throws RunTimeError when the profile fails or contains an unusable value: the program must then not
  /// run.
  void Main();

  /// Stops the timers, saves the panel's position and closes the link. Never throws: the program ends in any case.
  void Shutdown() noexcept;

  /// Whether a lost link is reconnected automatically.
  [[nodiscard]] bool AutoConnect() const { return parts_.auto_connect_override || parts_.settings.AutoConnect == 1; }

 private:
  void PlacePanel();
  void SaveState();

  Parts parts_;
};

}  // namespace orvalis
