#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "app/leftovers.h"
#include "app/panel_window.h"
#include "app/setup_fields.h"
#include "base/interval_timer.h"
#include "config/settings.h"
#include "config/settings_store.h"
#include "logs/log_writer.h"
#include "unit/connector.h"
#include "unit/unit_commands.h"

namespace orvalis {

/// What the setup dialog shows and lets the user change. Indices are those of the tables in setup_fields.h.
struct SetupForm {
  std::vector<std::string> texts;
  std::vector<bool> flags;
  std::vector<std::string> files;  ///< full paths; the dialog shows the names
  UnitOptions unit;
  bool unit_known = false;  ///< whether a unit is connected that `unit` is of
  std::string port;
};

/// The setup dialog's window.
class SetupDialog {
 public:
  virtual ~SetupDialog() = default;
  /// Shows the dialog until the user is done, with `form` as it stands; then `form` holds what the user made of it.
  /// True after OK, false after Cancel.
  virtual bool Exec(SetupForm& form) = 0;
  /// A unit was connected, or left, while the dialog is open: these are its switches.
  virtual void ShowUnit(const UnitOptions& unit, bool known) = 0;
  /// A message box.
  virtual void ShowMessage(std::string_view text) = 0;
  /// The user asked for a dialog that is open already.
  virtual void BringToFront() = 0;
};

/// Runs the dialog for the panel's button and for clients: takes the settings there and, after OK, back.
class SetupRoutine {
 public:
  struct Parts {
    SettingsStore& store;
    Settings& settings;
    UnitOptions& unit;
    std::function<bool()> unit_known;  ///< whether a unit is connected
    IntervalTimer& poll_timer;
    IntervalTimer& dialog_timer;  ///< runs the working cycle while the dialog is open
    SetupDialog& dialog;
    Leftovers& leftovers;
    PanelWindow* window;  ///< none when headless
  };

  explicit SetupRoutine(const Parts& parts) : parts_(parts) {}

  /// Returns when the dialog is closed. The poll timer is off meanwhile and the dialog's own is on, so that verdict,
  /// alerts and logs stay those of now, by the settings in force. Bad input is answered in the dialog; a store that
  /// cannot be written shows its reason and leaves the dialog open with nothing stored.
  void Run();
  /// Keeps the open dialog's switches of the unit those of the unit that is connected. To be called now and then.
  void FollowUnit();
  /// Whether the dialog is open.
  [[nodiscard]] bool open() const { return open_; }

 private:
  /// The unit's switches as the dialog got them.
  struct ShownUnit {
    UnitOptions options;
    bool known = false;
    [[nodiscard]] bool operator==(const ShownUnit& other) const = default;
  };

  [[nodiscard]] SetupForm CopyIn() const;
  /// Reads the form into `settings`; false when the dialog has to be shown again. Replacement texts go into the form.
  bool ReadBack(SetupForm& form, Settings& settings) const;
  /// Stores a confirmed form, whose switches of the unit were `shown` before the user changed them; false when the
  /// dialog has to be shown again.
  bool Accept(SetupForm& form, const ShownUnit& shown);

  Parts parts_;
  ShownUnit shown_;
  bool open_ = false;
};

/// The check boxes of the dialog that act at once, whatever becomes of the dialog. Each writes its key and throws
/// RunTimeError when the store fails, with the setting left as it was.
class ImmediateSwitches {
 public:
  struct Parts {
    SettingsStore& store;
    Settings& settings;
    SensorLink& link;
    Connector& connector;
    LogWriter& logs;
    std::function<bool()> demo_mode;  ///< whether the run makes its values up, for whatever reason
  };

  explicit ImmediateSwitches(const Parts& parts) : parts_(parts) {}

  void SetDemoMode(bool on);
  /// Connects at once when it is switched on and the port is not open.
  void SetAutoConnect(bool on);
  /// `folder` is the one chosen when switching on.
  void SetFullLog(bool on, const std::string& folder);
  void SetOneLineLog(bool on, const std::string& folder);

  [[nodiscard]] const Settings& settings() const { return parts_.settings; }

 private:
  /// The settings of one of the two logs.
  struct LogSettings {
    std::int32_t Settings::*enabled;
    std::string Settings::*folder;
    std::string_view enabled_key;
    std::string_view folder_key;
  };

  void SetLog(const LogSettings& log, bool on, const std::string& folder);
  /// Writes `keys` of `changed`, all or none, and takes it over when they are in the store.
  void Store(const Settings& changed, std::initializer_list<std::string_view> keys);

  Parts parts_;
};

}  // namespace orvalis
