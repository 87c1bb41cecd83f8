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

/// The contents of the setup dialog. Indices are those of the tables in setup_fields.h.
struct SetupForm {
  std::vector<std::string> texts;  ///< of the fields
  std::vector<bool> flags;
  std::vector<std::int32_t> choices;  ///< rows
  std::vector<std::string> plain_texts;
  std::vector<std::string> files;  ///< full paths; the dialog shows only the names
  UnitOptions unit;
  bool unit_known = false;  ///< whether `unit` is that of a connected unit
  std::string port;
};

/// The setup dialog's window.
class SetupDialog {
 public:
  virtual ~SetupDialog() = default;
  /// Shows the dialog with `form` until the user closes it; `form` then holds the user's input. True after OK, false
  /// after Cancel.
  virtual bool Exec(SetupForm& form) = 0;
  /// A unit was connected or disconnected while the dialog is open: these are its switches.
  virtual void ShowUnit(const UnitOptions& unit, bool known) = 0;
  /// A message box.
  virtual void ShowMessage(std::string_view text) = 0;
  /// The user asked for the dialog while it is open.
  virtual void BringToFront() = 0;
};

/// Runs the setup dialog: copies the settings into it and, after OK, back.
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
    PanelWindow* window;                         ///< none when headless
    std::function<void()> network_changed = {};  ///< a setting of the network has another value now
    std::function<void()> mqtt_changed = {};     ///< one of MQTT, or the station's name
  };

  explicit SetupRoutine(const Parts& parts) : parts_(parts) {}

  /// Returns when the dialog is closed. Meanwhile the dialog's timer replaces the poll timer, so that verdict, alerts
  /// and logs stay current under the settings in force. Bad input is reported in the dialog; if the store cannot be
  /// written, the dialog shows why and stays open with nothing stored.
  void Run();
  /// Updates the unit switches in the open dialog from the connected unit. To be called regularly.
  void FollowUnit();
  /// Whether the dialog is open.
  [[nodiscard]] bool open() const { return open_; }

 private:
  /// The unit's switches as shown in the dialog.
  struct ShownUnit {
    UnitOptions options;
    bool known = false;
    [[nodiscard]] bool operator==(const ShownUnit& other) const = default;
  };

  [[nodiscard]] SetupForm CopyIn() const;
  /// Reads the form into `settings`; false if the dialog must be shown again. Replacement texts go into the form.
  bool ReadBack(SetupForm& form, Settings& settings) const;
  /// Stores a confirmed form; `shown` are the unit's switches before the user changed them. False if the dialog must be
  /// shown again.
  bool Accept(SetupForm& form, const ShownUnit& shown);

  Parts parts_;
  ShownUnit shown_;
  bool open_ = false;
};

/// The check boxes of the dialog that act at once, even if the dialog is cancelled. Each writes its key and throws
/// RunTimeError when the store fails, leaving the setting unchanged.
class ImmediateSwitches {
 public:
  struct Parts {
    SettingsStore& store;
    Settings& settings;
    SensorLink& link;
    Connector& connector;
    LogWriter& logs;
    std::function<bool()> demo_mode;  ///< whether this run is in demo mode, for any reason
  };

  explicit ImmediateSwitches(const Parts& parts) : parts_(parts) {}

  void SetDemoMode(bool on);
  /// When switched on while the port is closed, connects at once.
  void SetAutoConnect(bool on);
  /// `folder` is the folder chosen when switching on.
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
  /// Writes `keys` of `changed`, all or none, and then applies `changed`.
  void Store(const Settings& changed, std::initializer_list<std::string_view> keys);

  Parts parts_;
};

}  // namespace orvalis
