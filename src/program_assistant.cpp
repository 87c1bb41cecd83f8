// The assistant of the first start, connected to the core.

#include <QCoreApplication>
#include <QFileInfo>
#include <QLocale>

#include "platform/native.h"
#include "program_windows.h"
#include "ui/controls/words.h"

namespace orvalis {
namespace {

/// The territory whose units the desktop's locale has, which may be another than that of its language.
std::string TerritoryOfUnits() {
  const QLocale locale = QLocale::system();
  const QString territory = QLocale::territoryToCode(locale.territory());
  switch (locale.measurementSystem()) {
    case QLocale::ImperialUSSystem:
      return "US";
    case QLocale::ImperialUKSystem:
      return "GB";
    default:
      return territory == "US" || territory == "GB" ? "" : territory.toStdString();
  }
}

}  // namespace

void ProgramWindows::BuildAssistant() {
  parts_.connector.BeforeConnect([this](const std::optional<std::string>& port) {
    const UnitSearch::Result* trying = search_ ? search_->trying() : nullptr;
    if (trying != nullptr && Core::SamePort(trying->port, port ? *port : core_.ChosenPort())) search_->GiveWay();
  });
  AddEntry(frmHandBox::Menu::kProgram, "mnuAssistant", Words::tr("&Assistant…"), "", [this] { OpenAssistant(); });
  QObject::connect(panel_.get(), &frmHandBox::SearchClicked, panel_.get(), [this] { OpenAssistant(); });
}

void ProgramWindows::OpenAssistant() {
  if (assistant_) {
    assistant_->raise();
    assistant_->activateWindow();
    return;
  }
  if (!search_) {  // only now: on some systems a port is a process of its own
    search_port_ = native::MakeSerialPort();
    search_.emplace(
        UnitSearch::Parts{.port = *search_port_,
                          .loop = parts_.loop,
                          .is_ours = [this](const std::string& name) { return core_.IsConnectedPort(name); },
                          .changed =
                              [this] {
                                if (assistant_) assistant_->ShowSearch();
                              }});
  }
  choices_.emplace(parts_.store, parts_.settings);
  if (choices_->first_start()) choices_->Propose(UsualUnits(TerritoryOfUnits()));
  assistant_connected_ = false;
  const QString link = native::SimulatedUnitPort();
  const QFileInfo beside(QCoreApplication::applicationDirPath() + "/orvalis-unit");
  const QString simulator = beside.isExecutable() ? beside.filePath() : beside.fileName();
  assistant_ = new frmAssistant({.choices = *choices_,
                                 .search = *search_,
                                 .ports = [this] { return core_.ListPorts(); },
                                 .link =
                                     [this] {
                                       return frmAssistant::Link{.state = parts_.link.state(),
                                                                 .port = parts_.link.port(),
                                                                 .failure = parts_.link.failure(),
                                                                 .demo = parts_.poll.InDemoMode()};
                                     },
                                 .now = [this]() -> const Observation& { return parts_.observer.Now(); },
                                 .finish = [this] { return FinishAssistant(); },
                                 .locale = parts_.store.locale(),
                                 .simulator = link.isEmpty() ? QString() : simulator + " --link " + link,
                                 .simulated_port = link},
                                panel_.get());
  QObject::connect(assistant_, &frmAssistant::ConnectWanted, panel_.get(),
                   [this](const QString& port) { ConnectTo(port.toStdString()); });
  QObject::connect(assistant_, &frmAssistant::SetupWanted, panel_.get(), [this](const char* frame) {
    setup_->ShowPage(frame);
    requests_->Run();
    core_.Refresh();
  });
  QObject::connect(assistant_, &frmAssistant::Skipped, panel_.get(), [this] { SkipAssistant(); });
  assistant_->SetNightTheme(parts_.settings.NightTheme == 1);
  assistant_->ShowInFront();
}

void ProgramWindows::ConnectTo(const std::string& port) {
  if (parts_.poll.InDemoMode()) return;  // no traffic then; when it is over at the end, it connects
  if (parts_.link.Connected() || parts_.link.connecting()) {
    if (Core::SamePort(port, parts_.link.port())) return;
    parts_.connector.Disconnect();
  }
  assistant_connected_ = true;
  parts_.connector.Connect([this](bool) { core_.Refresh(); }, port);
  core_.Refresh();
}

Message ProgramWindows::FinishAssistant() {
  const std::int32_t network = parts_.settings.NetworkEnabled;
  try {
    choices_->Store();
  } catch (const std::exception& error) {
    return MessageOf(error);
  }
  panel_window_->SetAlwaysOnTop(parts_.settings.AlwaysOnTop);
  setup_->SyncSwitches();
  if (parts_.settings.NetworkEnabled != network) core_.ApplyNetwork();
  if (parts_.settings.DemoMode == 1) {
    if (assistant_connected_) parts_.connector.Disconnect();
  } else if (!choices_->port.empty() && choices_->chosen.AutoConnect == 1) {
    ConnectTo(choices_->port);
  }
  core_.Refresh();
  return {};
}

void ProgramWindows::SkipAssistant() {
  // All as it was; but a client may rely on the connection by now.
  if (assistant_connected_ && !parts_.flags.connected) parts_.connector.Disconnect();
  Click(Message::Of("skipping the assistant"), [this] { choices_->Skip(); });
}

}  // namespace orvalis
