#include "program_windows.h"

#include <QAction>
#include <QCoreApplication>
#include <QKeySequence>
#include <QPixmap>
#include <chrono>
#include <iostream>

#include "platform/native.h"
#include "ui/controls/words.h"
#include "ui/desktop.h"

namespace orvalis {
namespace {

constexpr auto kChanging = Message::Of("changing a setting");

/// The panel's window for start-up and shutdown.
class PlacedPanel : public PanelWindow {
 public:
  explicit PlacedPanel(frmHandBox& form) : form_(form) {}
  void Place(int left, int top) override { form_.move(left, top); }
  void SetAlwaysOnTop(bool on) override { form_.SetAlwaysOnTop(on); }
  void Show() override { form_.show(); }
  [[nodiscard]] int Left() const override { return form_.x(); }
  [[nodiscard]] int Top() const override { return form_.y(); }

 private:
  frmHandBox& form_;
};

}  // namespace

ProgramWindows::ProgramWindows(Core& core) : core_(core), parts_(core.parts()) {
  BuildPanel();
  BuildEvents();
  BuildGraphs();
  BuildSetup();
  BuildWebPublishing();
  BuildProgramMenu();
  BuildTray();
  if (parts_.line.picture) TakePictureSoon();
}

ProgramWindows::~ProgramWindows() = default;

void ProgramWindows::BuildPanel() {
  panel_ = std::make_unique<frmHandBox>(parts_.panel);
  panel_window_ = std::make_unique<PlacedPanel>(*panel_);
  QObject::connect(panel_.get(), &frmHandBox::ConnectToggled, panel_.get(), [this](bool on) {
    if (on) {
      parts_.connector.Connect([this](bool) { core_.Refresh(); });
    } else {
      parts_.flags.connected = false;
      parts_.connector.Disconnect();
    }
    core_.Refresh();
  });
  QObject::connect(panel_.get(), &frmHandBox::NightThemeToggled, panel_.get(), [this](bool on) {
    parts_.settings.NightTheme = on ? 1 : 0;
    ApplyTheme();
    Click(Message::Of("saving the night theme"), [this] { parts_.store.Write("NightTheme", parts_.settings); });
  });
  QObject::connect(panel_.get(), &frmHandBox::Acknowledged, panel_.get(), [this] {
    Click(Message::Of("acknowledging the loss of the settings"), [this] { parts_.settings_loss.Acknowledge(); });
  });
  QObject::connect(panel_.get(), &frmHandBox::ForceUnsafeToggled, panel_.get(), [this](bool on) {
    Click(Message::Of("forcing the verdict"), [this, on] { parts_.observer.ForceUnsafe(on); });
  });
  QObject::connect(panel_.get(), &frmHandBox::TestUnsafeClicked, panel_.get(),
                   [this] { Click(Message::Of("testing the verdict"), [this] { parts_.observer.TestUnsafe(); }); });
  QObject::connect(panel_.get(), &frmHandBox::Closing, panel_.get(), [] { QCoreApplication::exit(0); });
}

void ProgramWindows::BuildEvents() {
  events_ = std::make_unique<frmEvents>(
      frmEvents::Parts{.events = parts_.events,
                       .style = parts_.style,
                       .on_top = [this] { return parts_.settings.AlwaysOnTop; },
                       .report = [this](const std::string& text) { parts_.events.Record(text); }},
      panel_.get());
  // The core may record events after the windows are destroyed.
  parts_.events.Listen([window = QPointer(events_.get())](const Event& event) {
    if (window) window->Append(event);
  });
  AddEntry(frmHandBox::Menu::kView, "mnuEvents", Words::tr("&Events…"), "Alt+E", [this] { events_->ShowInFront(); });
}

void ProgramWindows::BuildProgramMenu() {
  using enum frmHandBox::Menu;
  AddEntry(kProgram, "mnuPlace", Words::tr("&Place…"), "", [this] { AskForPlace(); });
  tray_messages_ = AddEntry(kProgram, "mnuTrayMessages", Words::tr("&Messages of the tray icon"), "", [this] {
    parts_.settings.TrayMessages = tray_messages_->isChecked() ? 1 : 0;
    Click(Message::Of("saving the choice of messages"),
          [this] { parts_.store.Write("TrayMessages", parts_.settings); });
  });
  tray_messages_->setCheckable(true);
  tray_messages_->setToolTip(
      Words::tr("A message over the desktop when it becomes safe or unsafe; never in the night theme"));
}

void ProgramWindows::BuildTray() {
  QList<QAction*> entries = panel_->VerdictEntries();
  auto* show = new QAction(Words::tr("Show the &panel"), panel_.get());
  QObject::connect(show, &QAction::triggered, panel_.get(), [this] { BringToFront(); });
  entries.prepend(show);
  tray_ = std::make_unique<TrayIcon>(entries);
  QObject::connect(tray_.get(), &TrayIcon::Clicked, panel_.get(), [this] { BringToFront(); });
}

void ProgramWindows::AskForPlace() {
  if (place_) {
    place_->raise();
    place_->activateWindow();
    return;
  }
  std::optional<Place> current;
  if (parts_.settings.Latitude && parts_.settings.Longitude) {
    current = Place{.latitude = *parts_.settings.Latitude, .longitude = *parts_.settings.Longitude};
  }
  place_ = new frmPlace(
      current, parts_.store.locale(),
      [this](const Place& place) { return DescribeSun(place, parts_.history.Now(), parts_.clock, WindowLanguage()); },
      panel_.get());
  QObject::connect(place_, &frmPlace::Chosen, panel_.get(),
                   [this](const std::optional<Place>& place) { SetPlace(place); });
  place_->open();  // not exec: nothing waits for it
}

void ProgramWindows::SetPlace(const std::optional<Place>& place) {
  parts_.settings.Latitude = place ? std::optional(place->latitude) : std::nullopt;
  parts_.settings.Longitude = place ? std::optional(place->longitude) : std::nullopt;
  Click(Message::Of("saving the place"), [this] {
    Profile::Batch batch(parts_.store.profile());
    parts_.store.Write("Latitude", parts_.settings);
    parts_.store.Write("Longitude", parts_.settings);
    batch.Commit();
  });
}

void ProgramWindows::BuildSetup() {
  setup_ = std::make_unique<frmSetup>(
      frmSetup::Parts{.switches = parts_.switches,
                      .trial = parts_.alert_trial,
                      .ports = [this] { return core_.ListPorts(); },
                      .report = [this](const std::exception_ptr& error) { parts_.boundary.Report(kChanging, error); },
                      .succeeded = [this] { parts_.boundary.Succeeded(kChanging); },
                      .version = ORVALIS_VERSION,
                      .locale = parts_.store.locale(),
                      .now = [this]() -> const Observation& { return parts_.observer.Now(); },
                      .network = [this] { return core_.NetworkNow(); },
                      .mqtt = [this] { return core_.MqttNow(); },
                      .try_mqtt = [this](const Settings& settings, auto done) { core_.TryMqtt(settings, done); },
                      .mqtt_tls = MosquittoClient::HasTls()},
      panel_.get());
  routine_.emplace(SetupRoutine::Parts{.store = parts_.store,
                                       .settings = parts_.settings,
                                       .unit = parts_.options,
                                       .unit_known = [this] { return parts_.link.Ready(); },
                                       .poll_timer = parts_.poll_timer,
                                       .dialog_timer = parts_.setup_timer,
                                       .dialog = *setup_,
                                       .leftovers = parts_.leftovers,
                                       .window = panel_window_.get(),
                                       .network_changed = [this] { core_.ApplyNetwork(); },
                                       .mqtt_changed = [this] { core_.ApplyMqtt(); }});
  requests_.emplace(*routine_, parts_.loop, parts_.boundary);
  AddEntry(frmHandBox::Menu::kView, "mnuTraffic", Words::tr("&Traffic…"), "Alt+T", [this] { OpenTraffic(); });
  panel_->SetSetupEntry(AddEntry(frmHandBox::Menu::kProgram, "mnuSetup", Words::tr("&Setup…"), "Alt+S", [this] {
    requests_->Run();
    core_.Refresh();
  }));
}

void ProgramWindows::BuildWebPublishing() {
  submit_ = std::make_unique<frmFormSubmit>(
      parts_.publisher, [this] { return desktop::PictureOf(*panel_); }, panel_.get());
  if (!native::SendsPictures()) submit_->HideBuiltIn();
  AddEntry(frmHandBox::Menu::kView, "mnuWeb", Words::tr("&Web publishing…"), "Alt+W",
           [this] { submit_->ShowInFront(); });
}

void ProgramWindows::BuildGraphs() {
  graphs_ = std::make_unique<GraphWindows>(
      frmGraph::Parts{.recorder = parts_.history,
                      .units = [this] { return UnitsOf(parts_.settings); },
                      .limits = [this] { return WordLimitsOf(parts_.settings); },
                      .on_top = [this] { return parts_.settings.AlwaysOnTop; },
                      .report = [this](const std::string& text) { parts_.events.Record(text); },
                      .style = parts_.style});
  parts_.history.OnReplaced([this] { graphs_->ShowDefaultRange(); });
  using enum frmHandBox::Menu;
  AddEntry(kView, "mnuTemperatureGraph", Words::tr("Temperature &graph…"), "Alt+G",
           [this] { graphs_->OpenTemperatures(); });
  AddEntry(kView, "mnuWindGraph", Words::tr("Wind grap&h…"), "Alt+H", [this] { graphs_->OpenWind(); });
  AddEntry(kView, "mnuRainGraph", Words::tr("Rain and &light graph…"), "Alt+L", [this] { graphs_->OpenRain(); });
}

QAction* ProgramWindows::AddEntry(frmHandBox::Menu menu, const char* name, const QString& text, const char* keys,
                                  std::function<void()> work) {
  QAction* entry = panel_->AddEntry(menu, name, text, QKeySequence(keys));
  QObject::connect(entry, &QAction::triggered, panel_.get(), std::move(work));
  return entry;
}

void ProgramWindows::ShowSettings() {
  ApplyTheme();
  tray_messages_->setChecked(parts_.settings.TrayMessages == 1);
  setup_->SyncSwitches();
  submit_->Load();
}

void ProgramWindows::Started() {
  panel_->ShowWhole();
  // The first values, or the banner of demo mode, may need more room.
  constexpr std::chrono::seconds kFirstValues{3};
  parts_.loop.CallAfter(kFirstValues, [this] { panel_->ShowWhole(); });
  // A panel whose picture is asked for tells why there is none.
  if (!parts_.line.picture) native::DetachConsole();
}

void ProgramWindows::Refresh() {
  panel_->Refresh();
  tray_->Show(parts_.panel.banner, panel_->theme(), parts_.settings.TrayMessages == 1);
  routine_->FollowUnit();
  submit_->RefreshPreview();
  graphs_->UpdateSettings();
}

void ProgramWindows::BringToFront() {
  panel_->showNormal();
  panel_->raise();
  panel_->activateWindow();
}

void ProgramWindows::OpenTraffic() {
  if (show_) {
    show_->raise();
    show_->activateWindow();
    return;
  }
  show_ = new frmShow(panel_.get(), parts_.style);  // it deletes itself when it is closed
  parts_.traffic = &show_->traffic();
  QObject::connect(show_, &QObject::destroyed, panel_.get(), [this] { parts_.traffic = nullptr; });
  ApplyTheme();
  show_->show();
}

void ProgramWindows::ApplyTheme() {
  const bool night = parts_.settings.NightTheme == 1;
  panel_->SetNightTheme(night);
  setup_->SetNightTheme(night);
  submit_->SetNightTheme(night);
  graphs_->SetNightTheme(night);
  events_->SetNightTheme(night);
  if (show_) show_->SetNightTheme(night);
  help_.SetNightTheme(night);
}

void ProgramWindows::TakePictureSoon() {
  parts_.poll.Listen([this](const SensorFrame&) { TakePicture(); });
  constexpr std::chrono::seconds kLongestWait{30};
  parts_.loop.CallAfter(kLongestWait, [] {
    std::cerr << "orvalis: no reading within 30 seconds, no picture written\n";
    QCoreApplication::exit(1);
  });
}

void ProgramWindows::TakePicture() {
  const bool saved = panel_->grab().save(QString::fromStdString(*parts_.line.picture));
  if (!saved) std::cerr << "orvalis: cannot write the picture " << *parts_.line.picture << '\n';
  QCoreApplication::exit(saved ? 0 : 1);
}

}  // namespace orvalis
