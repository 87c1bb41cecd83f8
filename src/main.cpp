// Builds the parts of the program and connects them. The only place that knows everybody.

#include <unistd.h>

#include <QApplication>
#include <QCoreApplication>
#include <QFileInfo>
#include <QLocale>
#include <QMessageBox>
#include <QPixmap>
#include <QPushButton>
#include <QStandardPaths>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>
#include <string>
#include <system_error>
#include <variant>
#include <vector>

#include "acquisition/alerts.h"
#include "acquisition/auto_reconnect.h"
#include "acquisition/connector.h"
#include "acquisition/error_boundary.h"
#include "acquisition/log_files.h"
#include "acquisition/log_writer.h"
#include "acquisition/panel_model.h"
#include "acquisition/poll_cycle.h"
#include "acquisition/sensor_link.h"
#include "acquisition/unit_commands.h"
#include "acquisition/weather_state.h"
#include "base/event_list.h"
#include "base/run_time_error.h"
#include "config/profile_command.h"
#include "config/settings.h"
#include "config/settings_store.h"
#include "config/startup.h"
#include "headless/reading_lines.h"
#include "platform/linux/ini_profile.h"
#include "platform/linux/line_output.h"
#include "platform/linux/qt_serial_port.h"
#include "platform/linux/serial_port_list.h"
#include "platform/linux/stop_signals.h"
#include "platform/qt/command_line.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_program_starter.h"
#include "platform/qt/qt_sound_player.h"
#include "platform/qt/single_instance.h"
#include "ui/frm_hand_box.h"
#include "ui/frm_setup.h"
#include "ui/theme.h"

namespace orvalis {
namespace {

constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

NumberLocale UserLocale() {
  const QString separator = QLocale::system().decimalPoint();
  return {.decimal_separator = separator == "," ? ',' : '.'};
}

QString ProfileFolder(const CommandLine& line) {
  if (line.profile_folder) return QString::fromStdString(*line.profile_folder);
  if (QString folder = qEnvironmentVariable("ORVALIS_PROFILE_DIR"); !folder.isEmpty()) return folder;
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation);
}

/// Where logs and pictures go unless the user chooses: beside the executable where that is allowed, as it is for a
/// program unpacked into a folder of its own, otherwise in the user's data folder.
std::string ProgramFolder() {
  const QString beside = QCoreApplication::applicationDirPath();
  if (QFileInfo(beside).isWritable()) return beside.toStdString();
  return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation).toStdString() + "/orvalis";
}

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

/// The running program: every part, in the order in which they need each other.
class Program {
 public:
  explicit Program(const CommandLine& line)
      : line_(line),
        profile_(ProfileFolder(line)),
        store_(profile_, ProgramFolder(), UserLocale()),
        events_(clock_),
        boundary_(panel_, events_),
        sounds_([this](const std::string& failure) { events_.Record(failure); }),
        alerts_(sounds_, programs_, events_),
        logs_([this](const std::string& text) {
          panel_.status = text;
          events_.Record(text);
        }),
        link_({.port = port_, .loop = loop_, .store = store_, .panel = panel_, .events = events_, .options = options_},
              line.port),
        connector_(link_, boundary_),
        reconnect_({.link = link_, .connector = connector_, .panel = panel_, .events = events_, .clock = clock_}),
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
               .demo_override = line.demo}),
        switches_({.store = store_, .settings = settings_, .link = link_, .connector = connector_, .logs = logs_}),
        poll_timer_([this] { Tick("polling the unit", [this] { poll_.Poll(); }); }),
        second_timer_([this] {
          Tick("reconnecting", [this] {
            reconnect_.Tick(startup_->AutoConnect() && !poll_.InDemoMode());
            poll_.WatchStaleness();
          });
        }) {
    KeepErrorLog();
    if (line.headless) {
      SpeakOnStandardOutput();
    } else {
      OpenPanel();
    }
    startup_.emplace(Startup::Parts{.flags = flags_,
                                    .store = store_,
                                    .settings = settings_,
                                    .window = window_.get(),
                                    .switches = switches_,
                                    .poll_timer = poll_timer_,
                                    .second_timer = second_timer_,
                                    .connector = connector_,
                                    .logs = logs_,
                                    .leftovers = leftovers_,
                                    .auto_connect_override = line.headless || line.port.has_value(),
                                    .demo_override = line.demo});
  }

  int Run() {
    startup_->Main();
    if (form_) {
      form_->SetNightTheme(settings_.NightTheme == 1);
      setup_->SetTheme(PanelTheme());
      setup_->SyncSwitches();
    }
    if (poll_.InDemoMode()) panel_.status = "Demo mode: the values are made up";
    Refresh();
    const int code = QCoreApplication::exec();
    startup_->Shutdown();
    return code;
  }

  /// Whether there is a panel to bring.
  bool BringToFront() {
    if (!form_) return false;
    form_->showNormal();
    form_->raise();
    form_->activateWindow();
    return true;
  }

 private:
  template <typename Work>
  void Tick(std::string_view doing, Work work) {
    boundary_.Run(doing, work);
    Refresh();
  }

  void Refresh() {
    if (form_) form_->Refresh();
  }

  /// What happened, in a file, for whoever comes to look after the night.
  void KeepErrorLog() {
    std::error_code error;
    std::filesystem::create_directories(store_.program_folder(), error);  // a failure shows when the log is opened
    error_log_.Open(store_.program_folder());
    events_.Listen([this](const Event& event) {
      error_log_.Write(FormatIso8601(event.time).substr(0, 10) + " " + EventText(event));
    });
  }

  void SpeakOnStandardOutput() {
    poll_.Listen([this](const SensorFrame& frame) {
      const Reading reading{
          .time = clock_.LocalNow(), .weather = weather_, .frame = frame, .connected = link_.Connected()};
      output_.Write(line_.json ? ReadingJson(reading) : ReadingText(reading));
    });
    const bool say_twice = !StandardErrorIsStandardOutput();
    events_.Listen([this, say_twice](const Event& event) {
      output_.Write(line_.json ? EventJson(event) : EventText(event));
      if (say_twice) error_output_.Write("orvalis: " + event.text);
    });
  }

  void OpenPanel() {
    form_ = std::make_unique<frmHandBox>(panel_);
    window_ = std::make_unique<PlacedPanel>(*form_);
    OpenSetup();
    QObject::connect(form_.get(), &frmHandBox::ConnectToggled, form_.get(), [this](bool on) {
      if (on) {
        connector_.Connect([this](bool) { Refresh(); });
      } else {
        connector_.Disconnect();
      }
      Refresh();
    });
    QObject::connect(form_.get(), &frmHandBox::NightThemeToggled, form_.get(), [this](bool on) {
      settings_.NightTheme = on ? 1 : 0;
      setup_->SetTheme(PanelTheme());
      Tick("keeping the night theme", [this] { store_.Write("NightTheme", settings_); });
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

  /// The setup dialog, hidden until it is asked for.
  void OpenSetup() {
    setup_ = std::make_unique<frmSetup>(
        frmSetup::Parts{
            .switches = switches_,
            .ports = ListSerialPorts,
            .report = [this](const std::exception_ptr& error) { boundary_.Report("changing a setting", error); },
            .version = ORVALIS_VERSION},
        form_.get());
    setup_routine_.emplace(SetupRoutine::Parts{.store = store_,
                                               .settings = settings_,
                                               .unit = options_,
                                               .poll_timer = poll_timer_,
                                               .dialog = *setup_,
                                               .leftovers = leftovers_,
                                               .window = window_.get()});
    QObject::connect(form_->AddToolButton("&Setup…"), &QPushButton::clicked, form_.get(),
                     [this] { Tick("running the setup", [this] { setup_routine_->Run(); }); });
  }

  [[nodiscard]] Theme PanelTheme() const {
    return settings_.NightTheme == 1 ? Theme::Night() : Theme::ForDesktop(QApplication::palette());
  }

  void TakePicture() {
    const QString file = QString::fromStdString(*line_.picture);
    const bool saved = form_->grab().save(file);
    if (!saved) std::cerr << "orvalis: cannot write the picture " << *line_.picture << '\n';
    QCoreApplication::exit(saved ? kExitOk : kExitFailed);
  }

  CommandLine line_;
  QtEventLoop loop_;
  QtClock clock_;
  QtSerialPort port_;
  IniProfile profile_;
  SettingsStore store_;
  ProgramFlags flags_;
  Settings settings_;
  WeatherState weather_;
  PanelModel panel_;
  UnitOptions options_;
  EventList events_;
  ErrorBoundary boundary_;
  QtSoundPlayer sounds_;
  QtProgramStarter programs_;
  Alerts alerts_;
  LogWriter logs_;
  Leftovers leftovers_;
  SensorLink link_;
  Connector connector_;
  AutoReconnect reconnect_;
  PollCycle poll_;
  ImmediateSwitches switches_;
  QtIntervalTimer poll_timer_;
  QtIntervalTimer second_timer_;
  RotatingLog error_log_{
      {.name = "error log", .file_name = "orvalis_errors.txt", .max_bytes = 1'000'000, .former_kept = 2},
      [](const std::string& text) { std::cerr << "orvalis: " << text << '\n'; }};
  LineOutput output_{STDOUT_FILENO};
  LineOutput error_output_{STDERR_FILENO};
  std::unique_ptr<frmHandBox> form_;
  std::unique_ptr<PlacedPanel> window_;
  std::unique_ptr<frmSetup> setup_;
  std::optional<SetupRoutine> setup_routine_;
  std::optional<Startup> startup_;
};

int RunProfile(const CommandLine& line) {
  IniProfile profile(ProfileFolder(line));
  SettingsStore store(profile, ProgramFolder(), UserLocale());
  return RunProfileCommand(line.profile, store, std::cin, std::cout, std::cerr);
}

/// Says why the program cannot run; in a window too when it was not started from a terminal, because nobody would see
/// it otherwise.
int FailToStart(const std::exception& error) {
  std::cerr << "orvalis: " << error.what() << '\n';
  const bool seen = isatty(STDERR_FILENO) == 1;
  const bool has_window = qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr &&
                          QGuiApplication::platformName() != "offscreen";
  if (has_window && !seen) QMessageBox::critical(nullptr, "Orvalis", QString::fromUtf8(error.what()));
  return kExitFailed;
}

/// Another program has the profile. Returns the exit code of this one.
int LeaveToTheOther(SingleInstance::Start start) {
  switch (start) {
    case SingleInstance::Start::kPanelBroughtUp:
      std::cerr << "orvalis: it runs already; its panel was brought to the front\n";
      return kExitOk;
    case SingleInstance::Start::kOtherHasNoPanel:
      std::cerr << "orvalis: it runs already, headless, with the same settings; stop that one, or use --profile\n";
      return kExitFailed;
    default:
      std::cerr << "orvalis: it runs already with the same settings and does not answer; stop that one, or use "
                   "--profile\n";
      return kExitFailed;
  }
}

bool DisplayExpected() {
  return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
         !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

/// Qt aborts when it finds no display to draw on; a person needs to know what to do instead.
void ExplainNoDisplay(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
  std::fprintf(stderr, "%s\n", qUtf8Printable(text));
  if (type != QtFatalMsg) return;
  std::fputs("orvalis: the display cannot be used; start it in a desktop, or with --headless\n", stderr);
  std::_Exit(kExitFailed);
}

int Run(int argc, char** argv) {
  const auto parsed = ParseCommandLine({argv, argv + argc});
  if (const auto* error = std::get_if<CommandLineError>(&parsed)) {
    std::cerr << "orvalis: " << error->text << '\n' << Usage();
    return kExitUsage;
  }
  const auto& line = std::get<CommandLine>(parsed);
  if (line.action == CommandLine::Action::kHelp) {
    std::cout << Usage();
    return kExitOk;
  }
  if (line.action == CommandLine::Action::kVersion) {
    std::cout << "Orvalis " ORVALIS_VERSION "\n";
    return kExitOk;
  }
  const bool windowed = line.action == CommandLine::Action::kRun && !line.headless;
  if (windowed && !DisplayExpected()) {
    std::cerr << "orvalis: there is no display for the panel; start it in a desktop, or with --headless\n";
    return kExitFailed;
  }
  // A reader of our output who goes away must not take the program with him.
  std::signal(SIGPIPE, SIG_IGN);

  // The words of the command line are ours; Qt gets the program's name alone.
  int qt_argc = 1;
  const QtMessageHandler former_handler = qInstallMessageHandler(ExplainNoDisplay);
  const std::unique_ptr<QCoreApplication> application =
      windowed ? std::make_unique<QApplication>(qt_argc, argv) : std::make_unique<QCoreApplication>(qt_argc, argv);
  qInstallMessageHandler(former_handler);
  QCoreApplication::setApplicationName("orvalis");
  QCoreApplication::setApplicationVersion(ORVALIS_VERSION);
  try {
    if (line.action == CommandLine::Action::kProfile) return RunProfile(line);
    // From here on: a signal that comes during the start is taken as soon as the event loop runs.
    const StopSignals stop_signals([] { QCoreApplication::exit(kExitOk); });
    if (windowed) QApplication::setQuitOnLastWindowClosed(false);
    SingleInstance instance(ProfileFolder(line));
    if (const auto start = instance.Claim(); start != SingleInstance::Start::kFirst) return LeaveToTheOther(start);
    Program program(line);
    instance.OnAsked([&program] { return program.BringToFront(); });
    return program.Run();
  } catch (const std::exception& error) {
    return FailToStart(error);
  }
}

}  // namespace
}  // namespace orvalis

int main(int argc, char** argv) {
  try {
    return orvalis::Run(argc, argv);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "orvalis: %s\n", error.what());
    return orvalis::kExitFailed;
  }
}
