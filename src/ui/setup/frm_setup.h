#pragma once

#include <QDialog>
#include <QPoint>
#include <QTimer>
#include <cstddef>
#include <exception>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "app/alert_trial.h"
#include "app/setup_routine.h"
#include "network/served.h"
#include "ui/controls/panel_texts.h"
#include "ui/controls/path_button.h"
#include "ui/setup/address_box.h"
#include "ui/setup/port_box.h"
#include "unit/serial_port_entry.h"
#include "verdict/observation.h"

class QBoxLayout;
class QCheckBox;
class QComboBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QRadioButton;
class QTabWidget;

namespace orvalis {

/// The setup dialog: a page each for the connection, the panel's limits, the unit's alarms, the verdict, the alerts,
/// the network and, in the advanced layout, the leftovers of the focuser driver. It shows a SetupForm and returns it;
/// only the immediate switches act on their own. Its controls have the names in the tables of setup_fields.h.
class frmSetup : public QDialog, public SetupDialog {
  Q_OBJECT
 public:
  struct Parts {
    ImmediateSwitches& switches;
    AlertTrial& trial;
    std::function<std::vector<SerialPortEntry>()> ports;
    /// Called with what a switch or the list of ports threw. For a switch the dialog also informs the user.
    std::function<void(const std::exception_ptr&)> report;
    std::function<void()> succeeded;  ///< called when a switch succeeded
    QString version;
    NumberLocale locale = {};                      ///< how the numbers in the boxes are written
    std::function<const Observation&()> now = {};  ///< the readings of now; null: there are none
    std::function<network::Served()> network = [] { return network::Served(); };  ///< what is served now
    std::function<Message()> mqtt = [] { return Message(); };  ///< what is published now, or why nothing is
    /// Tries a broker out and gives what came of it.
    std::function<void(const Settings&, std::function<void(const Message&)>)> try_mqtt = {};
    bool mqtt_tls = true;  ///< whether the line to a broker can be encrypted
  };
  explicit frmSetup(Parts parts, QWidget* parent = nullptr);

  /// Shown again because of bad input, it appears at the same position with the focus on that box.
  bool Exec(SetupForm& form) override;
  /// Over the dialog or, while that is hidden, over its parent.
  void ShowUnit(const UnitOptions& unit, bool known) override;
  void ShowMessage(std::string_view text) override;
  void BringToFront() override;

  /// Black and red, or the desktop's colours.
  void SetNightTheme(bool on);
  /// Turns to the page whose frame is called `frame`.
  void ShowPage(const char* frame);
  /// Updates the immediate switches from the settings, without acting.
  void SyncSwitches();

 private:
  /// One of the switches of the logs.
  using SetLog = std::function<void(bool on, const std::string& folder)>;

  QWidget* BuildConnectionPage();
  QWidget* BuildPanelPage();
  QWidget* BuildUnitPage();
  QWidget* BuildSafetyPage();
  QWidget* BuildAlertsPage();
  QWidget* BuildNetworkPage();
  QWidget* BuildMqttPage();
  QWidget* BuildLeftoversPage();
  QBoxLayout* BuildFooter();
  /// Finds the control of every row of the tables. Throws std::logic_error for a row without one.
  void CollectControls();
  void ConnectControls();
  void ConnectSwitches();
  void ConnectLog(QCheckBox* box, PathButton* folder, const SetLog& set);

  void ShowForm(const SetupForm& form);
  void ReadForm(SetupForm& form) const;
  void SetAdvanced(bool on);
  /// So that all tabs are in sight, in pixels.
  [[nodiscard]] int LeastWidth() const;
  /// Updates which boxes can be edited and the unit of temperature. Disabled boxes are read all the same.
  void UpdateControls();
  void ShowPortNote();
  void ShowAddressNote();
  /// Where the network can reach the program now; while the page is open it is kept up to date.
  void ShowNetworkNow();
  void ShowMqttNow();
  /// Tries out the broker that is typed, and shows what came of it.
  void TryMqtt();
  /// Shows below each box what OK would store.
  void ShowAdvice();
  /// Shows beside the limits the values of now, and what would become of these; while the dialog is open it is kept up
  /// to date.
  void ShowMeanings();
  [[nodiscard]] std::vector<std::string> FieldTexts() const;
  [[nodiscard]] UnitOptions UnitTyped() const;
  /// Sets the focus to the bad input that the dialog is shown again for, if any.
  void FocusBadField();

  /// The user switched the alert's file on, or asks for another one.
  void AskForAlertFile(std::size_t file, bool switched_on);
  /// Plays or starts what is chosen for the alert's file, and shows below it what comes of that.
  void TryAlert(std::size_t file);
  void AskForLogFolder(const PathButton& current, const SetLog& set);
  /// Runs `action`, reports to the user and the log if it throws, and updates the switches.
  void Act(const std::function<void()>& action);

  template <typename Control>
  [[nodiscard]] Control* Find(std::string_view name) const;
  /// None when they cannot be listed; any port can still be typed.
  [[nodiscard]] std::vector<SerialPortEntry> ListPorts() const;
  [[nodiscard]] std::string PlainText(std::size_t text) const;
  void SetPlainText(std::size_t text, const std::string& value);

  Parts parts_;
  bool advanced_ = false;
  std::optional<QPoint> position_;        ///< where the dialog stood last
  std::optional<std::size_t> bad_field_;  ///< since the last OK or Cancel: the field that the dialog is shown again for

  QTabWidget* pages_ = nullptr;
  QWidget* leftovers_page_ = nullptr;
  PortBox* port_ = nullptr;
  QLabel* port_note_ = nullptr;
  QCheckBox* demo_mode_ = nullptr;
  QCheckBox* auto_connect_ = nullptr;
  QCheckBox* full_log_ = nullptr;
  PathButton* full_log_path_ = nullptr;
  QCheckBox* one_line_log_ = nullptr;
  PathButton* one_line_log_path_ = nullptr;
  AddressBox* address_ = nullptr;
  QLabel* address_note_ = nullptr;
  QLabel* network_now_ = nullptr;
  QTimer live_timer_;
  QComboBox* wind_unit_ = nullptr;
  bool unit_known_ = false;  ///< whether the unit's switches are those of a connected one
  QLabel* mqtt_now_ = nullptr;
  QLabel* mqtt_result_ = nullptr;
  QPushButton* mqtt_test_ = nullptr;
  QLabel* temperature_label_ = nullptr;
  QRadioButton* relative_ = nullptr;  ///< the other button in the group of "Absolute"
  QPushButton* advanced_button_ = nullptr;

  // In the order of the tables.
  std::vector<QLineEdit*> fields_;
  std::vector<QLabel*> advice_;
  std::vector<QAbstractButton*> flags_;  ///< null for the layout, which is not a box
  std::vector<QComboBox*> choices_;
  std::vector<QLineEdit*> plain_texts_;  ///< null for the address, which has a box of its own
  std::vector<PathButton*> files_;
  std::vector<QLabel*> results_;  ///< of trying the files out
  std::vector<QCheckBox*> unit_options_;
  std::vector<QString> unit_tips_;  ///< theirs, while they can be changed
};

template <typename Control>
Control* frmSetup::Find(std::string_view name) const {
  auto* control = findChild<Control*>(ToQString(name));
  if (control == nullptr) throw std::logic_error("the setup dialog has no control for " + std::string(name));
  return control;
}

}  // namespace orvalis
