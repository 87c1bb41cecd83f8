#pragma once

#include <QDialog>
#include <QPoint>
#include <cstddef>
#include <exception>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/setup_routine.h"
#include "ui/controls/path_button.h"
#include "ui/setup/port_box.h"
#include "unit/serial_port_entry.h"

class QBoxLayout;
class QCheckBox;
class QLabel;
class QLineEdit;
class QRadioButton;
class QTabWidget;

namespace orvalis {

/// The setup dialog: a page each for the connection, the thresholds, the alerts and, in the advanced layout, what the
/// focuser template left behind. It shows a SetupForm and hands it back; only the switches that act at once do
/// something by themselves. Its controls bear the names of the tables in setup_fields.h.
class frmSetup : public QDialog, public SetupDialog {
  Q_OBJECT
 public:
  struct Parts {
    ImmediateSwitches& switches;
    std::function<std::vector<SerialPortEntry>()> ports;
    /// Told what a switch or the list of ports threw. The dialog tells the user itself when a switch did.
    std::function<void(const std::exception_ptr&)> report;
    std::function<void()> succeeded;  ///< told when a switch did what it is for
    QString version;
    NumberLocale locale = {};  ///< how the numbers in the boxes are written
  };
  explicit frmSetup(Parts parts, QWidget* parent = nullptr);

  /// Shown again because of bad input, it stands where it stood, with the box in question in focus.
  bool Exec(SetupForm& form) override;
  /// Over the dialog or, while that is hidden, over its parent.
  void ShowUnit(const UnitOptions& unit, bool known) override;
  void ShowMessage(std::string_view text) override;
  void BringToFront() override;

  /// Black and red, or the desktop's colours.
  void SetNightTheme(bool on);
  /// Brings the boxes that act at once up to the settings, without acting.
  void SyncSwitches();

 private:
  /// One of the switches of the logs.
  using SetLog = std::function<void(bool on, const std::string& folder)>;

  QWidget* BuildConnectionPage();
  QWidget* BuildThresholdsPage();
  QWidget* BuildAlertsPage();
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
  /// Which boxes may be edited, and in which unit temperatures are. What a disabled box holds is read all the same.
  void UpdateControls();
  void ShowPortNote();
  /// What OK would make of the boxes, beside each.
  void ShowAdvice();
  /// Puts the focus where the bad input is, if that is what brings the user back.
  void FocusBadField();

  /// The user switched the alert's file on, or asks for another one.
  void AskForAlertFile(std::size_t file, bool switched_on);
  void AskForLogFolder(const PathButton& current, const SetLog& set);
  /// Runs what may throw, tells the user and the log if it does, and shows the switches as they are then.
  void Act(const std::function<void()>& action);

  template <typename Control>
  [[nodiscard]] Control* Find(std::string_view name) const;
  /// None when they cannot be listed; any port can still be typed.
  [[nodiscard]] std::vector<SerialPortEntry> ListPorts() const;

  Parts parts_;
  bool advanced_ = false;
  std::optional<QPoint> position_;        ///< where the dialog stood last
  std::optional<std::size_t> bad_field_;  ///< since the last OK or Cancel: the field whose text brings the user back

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
  QLabel* temperature_label_ = nullptr;
  QRadioButton* relative_ = nullptr;  ///< the other one of the group with "Absolute"
  QPushButton* advanced_button_ = nullptr;

  // In the order of the tables.
  std::vector<QLineEdit*> fields_;
  std::vector<QLabel*> advice_;
  std::vector<QAbstractButton*> flags_;  ///< none for the layout, which is no box
  std::vector<PathButton*> files_;
  std::vector<QCheckBox*> unit_options_;
};

}  // namespace orvalis
