#include "program.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDir>
#include <QLocale>
#include <QPixmap>
#include <QPushButton>
#include <QStandardPaths>
#include <algorithm>
#include <chrono>
#include <exception>
#include <filesystem>
#include <iostream>
#include <system_error>

#include "base/path.h"
#include "base/run_time_error.h"
#include "headless/reading_lines.h"
#include "platform/safe_file.h"
#include "ui/desktop.h"

namespace orvalis {
namespace {

constexpr std::string_view kChanging = "changing a setting";

constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;

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

constexpr RotatingLog::Kind kErrorLog{
    .name = "error log", .file_name = "orvalis_errors.txt", .max_bytes = 1'000'000, .former_kept = 2};

/// What happens goes into a file, for whoever comes to look after the night.
void KeepErrorLog(EventList& events, RotatingLog& log) {
  const std::filesystem::path folder = PathFromText(ProgramFolder());
  std::error_code error;
  std::filesystem::create_directories(folder, error);  // a failure shows when the log is opened
  log.Open(folder);
  events.Listen(
      [&log](const Event& event) { log.Write(FormatIso8601(event.time).substr(0, 10) + " " + EventText(event)); });
}

}  // namespace

NumberLocale UserLocale() {
  const QString separator = QLocale::system().decimalPoint();
  return {.decimal_separator = separator == "," ? ',' : '.'};
}

std::optional<QString> ChosenProfileFolder(const CommandLine& line) {
  if (line.profile_folder) return QString::fromStdString(*line.profile_folder);
  if (QString folder = qEnvironmentVariable("ORVALIS_PROFILE_DIR"); !folder.isEmpty()) return folder;
  return std::nullopt;
}

std::filesystem::path HistoryFile(const CommandLine& line) {
  const QString folder = ChosenProfileFolder(line).value_or(
      QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/orvalis");
  return (folder + "/history.sqlite").toStdU16String();
}

std::string ProgramFolder() {
  const QString beside = QCoreApplication::applicationDirPath();
  const QString folder = safe_file::MayWrite(beside)
                             ? beside
                             : QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/orvalis";
  return QDir::toNativeSeparators(folder).toStdString();
}

void LogFailedStart(const std::string& reason) {
  const QtClock clock;
  EventList events(clock);
  RotatingLog log(kErrorLog, [](const std::string& text) { std::cerr << "orvalis: " << text << '\n'; });
  KeepErrorLog(events, log);
  events.Record("the program could not start: " + reason);
}

Program::Program(const CommandLine& line, std::chrono::seconds client_patience)
    : line_(line),
      client_patience_(client_patience),
      port_(native::MakeSerialPort()),
      profile_(native::MakeProfile(ChosenProfileFolder(line))),
      utility_(native::MakeUtilityObject()),
      store_(*profile_, ProgramFolder(), UserLocale()),
      events_(clock_),
      boundary_(panel_, events_),
      sounds_(native::MakeSoundPlayer([this](const std::string& failure) { events_.Record(failure); })),
      programs_(native::MakeProgramStarter()),
      alerts_(*sounds_, *programs_, events_),
      logs_([this](const std::string& text) { Report(text); }),
      link_({.port = *port_, .loop = loop_, .store = store_, .panel = panel_, .events = events_, .options = options_},
            line.port),
      connector_(link_, boundary_),
      reconnect_({.link = link_, .connector = connector_, .panel = panel_, .events = events_, .clock = clock_}),
      ftp_(native::MakeFtpSender()),
      commands_(native::MakeCommandStarter()),
      publisher_({.store = store_,
                  .settings = settings_,
                  .weather = weather_,
                  .panel = panel_,
                  .loop = loop_,
                  .clock = clock_,
                  .events = events_,
                  .boundary = boundary_,
                  .socket = http_,
                  .ftp = *ftp_,
                  .commands = *commands_,
                  .write_private = native::WritePrivateFile,
                  .folder = native::FolderOfPictures(store_.program_folder())}),
      poll_({.loop = loop_,
             .clock = clock_,
             .link = link_,
             .settings = settings_,
             .weather = weather_,
             .panel = panel_,
             .events = events_,
             .boundary = boundary_,
             .alerts = alerts_,
             .logs = logs_,
             .locale = store_.locale(),
             .demo_override = line.demo,
             .uploads = {&publisher_.webcam_schedule(), &publisher_.readings_schedule()}}),
      history_store_(HistoryFile(line), clock_, [this](const std::string& text) { Report(text); }),
      history_({.loop = loop_,
                .clock = clock_,
                .store = history_store_,
                .report = [this](const std::string& text) { Report(text); },
                .remember = !line.headless}),
      switches_({.store = store_,
                 .settings = settings_,
                 .link = link_,
                 .connector = connector_,
                 .logs = logs_,
                 .demo_mode = [this] { return poll_.InDemoMode(); }}),
      poll_timer_([this] { Tick("polling the unit", [this] { poll_.Poll(); }); }),
      second_timer_([this] {
        Tick("reconnecting", [this] {
          reconnect_.Tick(startup_->AutoConnect() && !poll_.InDemoMode());
          poll_.WatchStaleness();
        });
      }),
      error_log_(kErrorLog, [this](const std::string& text) { error_output_.Write("orvalis: " + text); }),
      weather_parts_{.flags = flags_,
                     .settings = settings_,
                     .weather = weather_,
                     .panel = panel_,
                     .link = link_,
                     .connector = connector_,
                     .logs = logs_,
                     .traffic = traffic_,
                     .locale = store_.locale(),
                     .demo_mode = [this] { return poll_.InDemoMode(); },
                     .run_setup = [this](Weather::Done closed) { RunSetupFor(std::move(closed)); },
                     .end_program = [] { QCoreApplication::exit(kExitOk); }},
      server_(native::MakeWeatherServer({.create = [this] { return std::make_unique<Weather>(weather_parts_); },
                                         .record = [this](const std::string& text) { events_.Record(text); },
                                         .ends_with_last_client = line.automation})) {
  KeepErrorLog(events_, error_log_);
  poll_.Listen([this](const SensorFrame& frame) { history_.Note(weather_, frame); });
  if (!line.headless) {
    OpenPanel();
  } else if (line.automation) {
    events_.Listen([this](const Event& event) { error_output_.Write("orvalis: " + event.text); });
  } else {
    SpeakOnStandardOutput();
  }
  startup_.emplace(Startup::Parts{.flags = flags_,
                                  .utility = *utility_,
                                  .store = store_,
                                  .settings = settings_,
                                  .window = window_.get(),
                                  .switches = switches_,
                                  .poll_timer = poll_timer_,
                                  .second_timer = second_timer_,
                                  .connector = connector_,
                                  .logs = logs_,
                                  .leftovers = leftovers_,
                                  .started_by_user = !line.automation,
                                  .auto_connect_override = (line.headless && !line.automation) || line.port.has_value(),
                                  .demo_mode = [this] { return poll_.InDemoMode(); }});
}

Program::~Program() = default;

int Program::Run() {
  startup_->Main();
  publisher_.Load();
  if (form_) {
    form_->SetNightTheme(settings_.NightTheme == 1);
    ApplyTheme();
    setup_->SyncSwitches();
    submit_->Load();
  }
  ServeClients();
  if (poll_.InDemoMode()) panel_.status = "Demo mode: the values are made up";
  Refresh();
  if (form_) {
    form_->ShowWhole();
    // The first values, or the banner of demo mode, may need more room.
    constexpr std::chrono::seconds kFirstValues{3};
    loop_.CallAfter(kFirstValues, [this] { form_->ShowWhole(); });
  }
  history_.LoadSoon();
  // What the start had to say is said. A panel whose picture is asked for tells why there is none.
  if (form_ && !line_.picture) native::LeaveConsole();
  const int code = QCoreApplication::exec();
  ShutDown();
  return code;
}

void Program::ShutDown() noexcept {
  startup_->Shutdown();  // first: the link is closed and the panel's place kept, whatever the history's disk does
  history_.Flush();
}

bool Program::BringToFront() {
  if (!form_) return false;
  form_->showNormal();
  form_->raise();
  form_->activateWindow();
  return true;
}

void Program::Refresh() {
  if (form_) form_->Refresh();
  if (setup_routine_) setup_routine_->FollowUnit();
  if (submit_) submit_->RefreshPreview();
  if (graphs_) graphs_->FollowSettings();
}

void Program::Report(const std::string& text) {
  panel_.status = text;
  events_.Record(text);
}

void Program::SpeakOnStandardOutput() {
  poll_.Listen([this](const SensorFrame& frame) {
    const Reading reading{
        .time = clock_.LocalNow(), .weather = weather_, .frame = frame, .connected = link_.Connected()};
    output_.Write(line_.json ? ReadingJson(reading) : ReadingText(reading));
  });
  const bool say_twice = !native::StandardErrorIsStandardOutput();
  events_.Listen([this, say_twice](const Event& event) {
    output_.Write(line_.json ? EventJson(event) : EventText(event));
    if (say_twice) error_output_.Write("orvalis: " + event.text);
  });
}

void Program::OpenPanel() {
  form_ = std::make_unique<frmHandBox>(panel_);
  window_ = std::make_unique<PlacedPanel>(*form_);
  OpenSetup();
  OpenWebPublishing();
  OpenGraphs();
  QObject::connect(form_.get(), &frmHandBox::ConnectToggled, form_.get(), [this](bool on) {
    if (on) {
      connector_.Connect([this](bool) { Refresh(); });
    } else {
      flags_.connected = false;
      connector_.Disconnect();
    }
    Refresh();
  });
  QObject::connect(form_.get(), &frmHandBox::NightThemeToggled, form_.get(), [this](bool on) {
    settings_.NightTheme = on ? 1 : 0;
    ApplyTheme();
    Click("keeping the night theme", [this] { store_.Write("NightTheme", settings_); });
  });
  QObject::connect(form_.get(), &frmHandBox::Closing, form_.get(), [] { QCoreApplication::exit(kExitOk); });
  events_.Listen([this](const Event& event) { form_->AppendEvent(event); });
  poll_.Listen([this](const SensorFrame&) {
    Refresh();
    if (line_.picture) TakePicture();
  });
  if (line_.picture) {
    constexpr std::chrono::seconds kLongestWait{30};
    loop_.CallAfter(kLongestWait, [] {
      std::cerr << "orvalis: no values came within 30 seconds, so there is no picture\n";
      QCoreApplication::exit(kExitFailed);
    });
  }
}

void Program::OpenSetup() {
  setup_ = std::make_unique<frmSetup>(
      frmSetup::Parts{.switches = switches_,
                      .ports = [this] { return ListPorts(); },
                      .report = [this](const std::exception_ptr& error) { boundary_.Report(kChanging, error); },
                      .succeeded = [this] { boundary_.Succeeded(kChanging); },
                      .version = ORVALIS_VERSION},
      form_.get());
  setup_routine_.emplace(SetupRoutine::Parts{.store = store_,
                                             .settings = settings_,
                                             .unit = options_,
                                             .unit_known = [this] { return link_.Ready(); },
                                             .poll_timer = poll_timer_,
                                             .dialog = *setup_,
                                             .leftovers = leftovers_,
                                             .window = window_.get()});
  QObject::connect(form_->AddToolButton("&Traffic…"), &QPushButton::clicked, form_.get(), [this] { OpenTraffic(); });
  QObject::connect(form_->AddToolButton("&Setup…"), &QPushButton::clicked, form_.get(), [this] { RunSetup(); });
}

std::vector<SerialPortEntry> Program::ListPorts() const {
  std::vector<SerialPortEntry> ports = native::ListSerialPorts();
  if (!link_.Connected()) return ports;
  auto open = std::find_if(ports.begin(), ports.end(),
                           [this](const SerialPortEntry& entry) { return entry.name == link_.port_name(); });
  if (open == ports.end()) open = ports.insert(ports.begin(), {link_.port_name(), {}});
  open->description += open->description.empty() ? "Connected" : ", connected";
  return ports;
}

void Program::RunSetup() {
  std::exception_ptr failure;
  Click("running the setup", [&] {
    try {
      setup_routine_->Run();
    } catch (...) {
      failure = std::current_exception();  // the clients that wait for the dialog are told too
      throw;
    }
  });
  if (setup_routine_->open()) return;  // it was, and came to the front
  for (const auto& closed : std::exchange(setup_waiters_, {})) closed(failure);
}

void Program::RunSetupFor(Weather::Done closed) {
  if (!setup_routine_) {
    throw RunTimeError(RunTimeError::kDeviceUnavailable, "There is no setup dialog: Orvalis runs without windows");
  }
  setup_waiters_.push_back(std::move(closed));
  loop_.CallAfter({}, [this] { RunSetup(); });  // the dialog runs when the client's call has been taken
}

void Program::OpenTraffic() {
  if (show_) {
    show_->raise();
    show_->activateWindow();
    return;
  }
  show_ = new frmShow(form_.get());
  traffic_ = &show_->traffic();
  QObject::connect(show_, &QObject::destroyed, form_.get(), [this] { traffic_ = nullptr; });
  ApplyTheme();
  show_->show();
}

void Program::ServeClients() {
  const bool offered = server_ && server_->Start();
  if (!line_.automation) return;
  if (!offered) {
    throw RunTimeError(RunTimeError::kDeviceUnavailable,
                       "it was started for a client and cannot be reached by one; start it without --automation");
  }
  loop_.CallAfter(client_patience_, [this] {
    if (server_->had_clients()) return;
    events_.Record("it was started for a client, and none came");
    QCoreApplication::exit(kExitOk);
  });
}

void Program::ApplyTheme() {
  setup_->SetTheme(PanelTheme());
  submit_->SetTheme(PanelTheme());
  graphs_->SetTheme(PanelTheme());
  if (show_) show_->SetTheme(PanelTheme());
}

void Program::OpenWebPublishing() {
  submit_ = std::make_unique<frmFormSubmit>(
      publisher_, [this] { return desktop::PictureOf(*form_); }, form_.get());
  if (!native::SendsPictures()) submit_->HideBuiltIn();
  QObject::connect(form_->AddToolButton("&Web…"), &QPushButton::clicked, submit_.get(), &frmFormSubmit::ShowInFront);
}

void Program::OpenGraphs() {
  graphs_ = std::make_unique<GraphWindows>(
      frmGraph::Parts{.recorder = history_,
                      .centigrade = [this] { return settings_.Centigrade; },
                      .on_top = [this] { return settings_.AlwaysOnTop; },
                      .report = [this](const std::string& text) { events_.Record(text); }});
  history_.OnReplaced([this] { graphs_->ShowAnew(); });
  QObject::connect(form_->AddToolButton("Temperature &graph…"), &QPushButton::clicked, form_.get(),
                   [this] { graphs_->OpenTemperatures(); });
  QObject::connect(form_->AddToolButton("Wind grap&h…"), &QPushButton::clicked, form_.get(),
                   [this] { graphs_->OpenWind(); });
}

Theme Program::PanelTheme() const {
  return settings_.NightTheme == 1 ? Theme::Night() : Theme::ForDesktop(QApplication::palette());
}

void Program::TakePicture() {
  const QString file = QString::fromStdString(*line_.picture);
  const bool saved = form_->grab().save(file);
  if (!saved) std::cerr << "orvalis: cannot write the picture " << *line_.picture << '\n';
  QCoreApplication::exit(saved ? kExitOk : kExitFailed);
}

}  // namespace orvalis
