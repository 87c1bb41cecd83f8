// What the setup dialog does before OK: the switches that act at once, and asking for files and folders.

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>

#include "ui/controls/file_pickers.h"
#include "ui/controls/panel_texts.h"
#include "ui/controls/words.h"
#include "ui/setup/frm_setup.h"

namespace orvalis {

// "clicked" throughout: the boxes also follow the settings, and following must not act.
void frmSetup::ConnectSwitches() {
  connect(demo_mode_, &QCheckBox::clicked, this, [this](bool on) { Act([&] { parts_.switches.SetDemoMode(on); }); });
  connect(auto_connect_, &QCheckBox::clicked, this,
          [this](bool on) { Act([&] { parts_.switches.SetAutoConnect(on); }); });
  ConnectLog(full_log_, full_log_path_,
             [this](bool on, const std::string& folder) { parts_.switches.SetFullLog(on, folder); });
  ConnectLog(one_line_log_, one_line_log_path_,
             [this](bool on, const std::string& folder) { parts_.switches.SetOneLineLog(on, folder); });
}

void frmSetup::ConnectLog(QCheckBox* box, PathButton* folder, const SetLog& set) {
  connect(box, &QCheckBox::clicked, this, [this, folder, set](bool on) {
    if (on) {
      AskForLogFolder(*folder, set);
    } else {
      Act([&set] { set(false, {}); });
    }
  });
  connect(folder, &QPushButton::clicked, this, [this, folder, set] { AskForLogFolder(*folder, set); });
}

void frmSetup::AskForLogFolder(const PathButton& current, const SetLog& set) {
  Act([&] {
    if (const auto folder = PickLogFolder(this, current.path())) set(true, *folder);
  });
}

void frmSetup::AskForAlertFile(std::size_t file, bool switched_on) {
  const SetupFile& row = SetupFiles()[file];
  QCheckBox* box = Find<QCheckBox>(row.check_box);
  const auto chosen = PickFile(this, row.is_sound ? kSoundFileFilter : kProgramFileFilter, files_[file]->path());
  if (chosen) {
    files_[file]->SetPath(*chosen);
    box->setChecked(true);
  } else if (switched_on && files_[file]->path().empty()) {
    box->setChecked(false);
  }
}

void frmSetup::TryAlert(std::size_t file) {
  // A program may end after the dialog.
  parts_.trial.Try(SetupFiles()[file], files_[file]->path(),
                   [this, dialog = QPointer(this), file](const Message& what) {
                     if (!dialog) return;
                     results_[file]->setText("↑ " + Translated(what));
                     results_[file]->show();
                     files_[file]->setAccessibleDescription(Translated(what));
                   });
}

void frmSetup::ShowMqttNow() { mqtt_now_->setText(Translated(parts_.mqtt())); }

void frmSetup::TryMqtt() {
  Settings typed = parts_.switches.settings();
  for (std::size_t i = 0; i < flags_.size(); ++i) {
    if (flags_[i] != nullptr) SetupFlags()[i].Set(flags_[i]->isChecked(), typed);
  }
  for (std::size_t i = 0; i < plain_texts_.size(); ++i) typed.*SetupTexts()[i].member = PlainText(i);
  for (std::size_t i = 0; i < fields_.size(); ++i) {
    const SetupField& field = SetupFields()[i];
    const SetupReading reading = ReadSetupField(field, fields_[i]->text().toStdString(), parts_.locale);
    if (field.member == SetupField::Member(&Settings::MqttPort)) StoreSetupField(field, reading.value, typed);
  }
  const auto show = [dialog = QPointer(this)](const QString& what) {
    if (!dialog) return;
    dialog->mqtt_result_->setText(what);
    dialog->mqtt_result_->show();
    dialog->mqtt_test_->setAccessibleDescription(what);
  };
  if (typed.MqttPort < 1) {
    show(tr("The port must be 1 through 65535"));
    return;
  }
  show(tr("Connecting…"));
  parts_.try_mqtt(typed, [show](const Message& what) { show(Translated(what)); });
}

void frmSetup::Act(const std::function<void()>& action) {
  try {
    action();
    parts_.succeeded();
  } catch (const std::exception& error) {
    parts_.report(std::current_exception());
    ShowMessage(error.what());
  }
  SyncSwitches();
}

void frmSetup::SyncSwitches() {
  const Settings& settings = parts_.switches.settings();
  demo_mode_->setChecked(settings.DemoMode == 1);
  auto_connect_->setChecked(settings.AutoConnect == 1);
  full_log_->setChecked(settings.g_lFullLog == 1);
  full_log_path_->SetPath(settings.g_sFullLogPath);
  one_line_log_->setChecked(settings.g_lOneLineLog == 1);
  one_line_log_path_->SetPath(settings.g_sOneLineLogPath);
}

std::vector<SerialPortEntry> frmSetup::ListPorts() const {
  try {
    return parts_.ports();
  } catch (const std::exception&) {
    parts_.report(std::current_exception());
    return {};
  }
}

}  // namespace orvalis
