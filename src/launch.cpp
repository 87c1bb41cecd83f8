#include "launch.h"

#include <QStandardPaths>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <string>
#include <utility>
#include <variant>
#include <vector>

#include "app/profile_command.h"
#include "base/clock.h"
#include "base/run_time_error.h"
#include "config/settings_store.h"
#include "platform/native.h"
#include "platform/qt/command_line.h"
#include "platform/qt/single_instance.h"
#include "platform/system/crash_report.h"
#include "platform/system/stop_signals.h"

namespace orvalis {
namespace {

constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

/// For the first client of a program that was started for one.
constexpr std::chrono::seconds kClientPatience{30};
/// The same where its client has probably been served by another program.
constexpr std::chrono::seconds kInheritedPatience{2};

/// How a program that was started for a client comes to the place of the one program, if at all.
enum class Turn {
  kFirst,      ///< its client waits for it
  kInherited,  ///< another one served clients meanwhile and has ended; this one's is perhaps among them
  kServed,     ///< another one serves clients, this one's among them
  kTaken,      ///< another one has the place, and clients do not reach it
};

/// Several clients that come at once, with no program running, start one each, and the first to be ready serves them
/// all. And a program whose last client has left may still be closing its link when the next client comes.
Turn WaitForTurn(SingleInstance& instance) {
  using std::chrono::steady_clock;
  constexpr std::chrono::milliseconds kPatience{5000};
  constexpr std::chrono::milliseconds kStep{50};
  // A client that waits for its program finds another one within about a second.
  constexpr std::chrono::milliseconds kAllFoundIt{2000};
  const auto begin = steady_clock::now();
  steady_clock::duration served{};
  for (auto now = begin; now - begin < kPatience;) {
    const bool other_serves = native::OtherServesClients();
    if (instance.ClaimWithin(kStep)) return other_serves || served.count() > 0 ? Turn::kInherited : Turn::kFirst;
    const auto before = std::exchange(now, steady_clock::now());
    if (other_serves) served += now - before;
    if (served >= kAllFoundIt) return Turn::kServed;
  }
  return Turn::kTaken;
}

int RunProfile(const CommandLine& line) {
  const std::unique_ptr<Profile> profile = native::MakeProfile(ChosenProfileFolder(line));
  SettingsStore store(*profile, ProgramFolder(), UserLocale());
  return RunProfileCommand(line.profile, store, std::cin, std::cout, std::cerr);
}

/// Reports why the program cannot run, and records it in the error log; in a window too if a person started it, but not
/// from a terminal. When it was started for a client, which waits for it to end, there may be no one to close a window:
/// then the system's log records it.
int FailToStart(const std::exception& error, const CommandLine& line, WindowSystem* windows) {
  StopSignals::ExitImmediately(kExitFailed);
  std::cerr << native::ErrorLinePrefix(EventLevel::kError) << "orvalis: " << error.what() << '\n';
  if (line.action == CommandLine::Action::kRun) LogFailedStart(error.what());
  if (line.automation) native::WriteSystemLog(std::string("Orvalis cannot serve a client: ") + error.what());
  if (windows != nullptr && !line.automation && !native::StandardErrorIsTerminal()) {
    windows->ShowError(QString::fromUtf8(error.what()));
  }
  return kExitFailed;
}

/// Another program uses the profile. Returns the exit code of this one.
int DeferToRunningInstance(SingleInstance::Start start) {
  StopSignals::ExitImmediately(kExitFailed);  // whoever reads what it says may have stopped reading
  switch (start) {
    case SingleInstance::Start::kPanelRaised:
      std::cerr << "orvalis: already running; its panel was brought to the front\n";
      return kExitOk;
    case SingleInstance::Start::kOtherIsHeadless:
      std::cerr << "orvalis: already running headless with the same settings; stop it or use --profile\n";
      return kExitFailed;
    case SingleInstance::Start::kNameIsTaken:
      std::cerr << "orvalis: already running with the same settings, but its panel cannot be raised: another user "
                   "of this machine has taken its socket name; stop it or use --profile\n";
      return kExitFailed;
    default:
      std::cerr << "orvalis: already running with the same settings but not responding; stop it or use "
                   "--profile\n";
      return kExitFailed;
  }
}

/// The program that has the profile marks its folder; the system's own store is marked in the user's folder.
QString LockFolder(const CommandLine& line) {
  return ChosenProfileFolder(line).value_or(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
}

/// Qt aborts when it finds no display to draw on; a person needs to know what to do instead.
void ExplainNoDisplay(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
  std::fprintf(stderr, "%s\n", qUtf8Printable(text));
  if (type != QtFatalMsg) return;
  std::fputs("orvalis: cannot use the display; start it from a desktop, or use --headless\n", stderr);
  std::_Exit(kExitFailed);
}

/// A service waits until the program that has the settings ends, which a person may have started, and takes its place
/// then. False when it is to end first. Otherwise the system would start it again and again, and each start would bring
/// the panel to the front.
bool WaitForPlace(SingleInstance& instance, ServiceManager& manager, const bool& ending) {
  constexpr std::chrono::milliseconds kStep{500};
  if (instance.ClaimWithin({})) return true;
  manager.Tell("waits for another Orvalis with the same settings to end");
  while (!ending) {
    if (instance.ClaimWithin(kStep)) return true;
    QCoreApplication::processEvents();
  }
  return false;
}

/// How the program has ended.
struct Ending {
  int exit_code;
  bool leaves_thread = false;
};

Ending RunProgram(const CommandLine& line, WindowSystem* windows) {
  // From here on, a signal during the start is handled as soon as the event loop runs.
  Core* running = nullptr;
  bool ending = false;
  const std::unique_ptr<ServiceManager> manager = native::MakeServiceManager();
  const StopSignals stop_signals({.stop =
                                      [&ending] {
                                        ending = true;
                                        QCoreApplication::exit(kExitOk);
                                      },
                                  .session_ended =
                                      [&running] {
                                        if (running != nullptr) running->ShutDown();
                                      }});
  SingleInstance instance(LockFolder(line));
  std::chrono::seconds client_patience = kClientPatience;
  if (line.automation) {
    const Turn turn = WaitForTurn(instance);
    if (turn == Turn::kServed) return {kExitOk};
    if (turn == Turn::kTaken) {
      throw RunTimeError(RunTimeError::kDeviceUnavailable,
                         "already running with the same settings, and clients cannot reach it");
    }
    if (turn == Turn::kInherited) client_patience = kInheritedPatience;
  } else if (manager->Watches()) {
    if (!WaitForPlace(instance, *manager, ending)) return {kExitOk};
  } else if (const auto start = instance.Claim(); start != SingleInstance::Start::kFirst) {
    return {DeferToRunningInstance(start)};
  }
  Core core(line, client_patience, *manager);
  running = &core;
  if (!instance.problem().isEmpty()) core.Note(instance.problem().toStdString());
  const std::unique_ptr<Front> front = windows != nullptr ? windows->MakeWindows(core) : nullptr;
  instance.OnActivate([&front] {
    if (front) front->BringToFront();
    return front != nullptr;
  });
  const int code = core.Run(front.get());
  return {code, core.LeavesThread()};
}

/// Ends the process immediately. What remains to be done the system does anyway.
[[noreturn]] void ExitNow(int code) {
  std::cout.flush();
  std::cerr.flush();
  std::fflush(nullptr);
  std::_Exit(code);
}

/// The application object that `line` needs: with windows, or without.
std::unique_ptr<QCoreApplication> MakeApplication(int& argc, char** argv, WindowSystem* windows) {
  if (windows == nullptr) return std::make_unique<QCoreApplication>(argc, argv);
  const QtMessageHandler previous = qInstallMessageHandler(ExplainNoDisplay);
  std::unique_ptr<QCoreApplication> application = windows->MakeApplication(argc, argv);
  qInstallMessageHandler(previous);
  return application;
}

/// Handles what needs no application object: errors, help, version.
std::optional<int> AnswerDirectly(const std::variant<CommandLine, CommandLineError>& parsed, bool has_windows) {
  if (const auto* error = std::get_if<CommandLineError>(&parsed)) {
    std::cerr << "orvalis: " << error->text << '\n' << Usage(has_windows, native::UsageOfServices());
    return kExitUsage;
  }
  switch (std::get<CommandLine>(parsed).action) {
    case CommandLine::Action::kHelp:
      std::cout << Usage(has_windows, native::UsageOfServices());
      return kExitOk;
    case CommandLine::Action::kVersion:
      std::cout << "Orvalis " ORVALIS_VERSION "\n";
      return kExitOk;
    default:
      return std::nullopt;
  }
}

int DoLaunch(int argc, char** argv, WindowSystem* windows) {
  crash_report::EmptyDumps();
  const native::Process process(argc, argv);
  if (const auto code = native::RunService(process.arguments())) return *code;
  if (windows != nullptr) windows->RunHelper(process.arguments());
  const auto parsed = ParseCommandLine(process.arguments(), windows != nullptr);
  const auto* wanted = std::get_if<CommandLine>(&parsed);
  if (wanted != nullptr && wanted->action == CommandLine::Action::kRun) {
    StopSignals::ExitImmediately(kExitOk);
  } else {
    StopSignals::RestoreDefault();
  }
  if (const auto code = AnswerDirectly(parsed, windows != nullptr)) return *code;
  auto line = std::get<CommandLine>(parsed);
  const bool shows_windows = windows != nullptr && line.action == CommandLine::Action::kRun && !line.headless;
  if (shows_windows && !native::HasDisplay()) {
    if (!line.automation) {
      std::cerr << "orvalis: no display for the panel; start it from a desktop, or use --headless\n";
      return kExitFailed;
    }
    line.headless = true;  // a bus that was started without a desktop starts the program without one too
  }
  if (line.headless || line.action != CommandLine::Action::kRun) windows = nullptr;
  // The words of the command line are ours; Qt gets the program's name, and what it needs to know of the system.
  std::vector<std::string> qt_words = native::QtArguments();
  std::vector<char*> qt_argv{argv[0]};
  for (std::string& word : qt_words) qt_argv.push_back(word.data());
  int qt_argc = windows != nullptr ? static_cast<int>(qt_argv.size()) : 1;
  qt_argv.push_back(nullptr);
  const std::unique_ptr<QCoreApplication> application = MakeApplication(qt_argc, qt_argv.data(), windows);
  QCoreApplication::setApplicationName("orvalis");
  QCoreApplication::setApplicationVersion(ORVALIS_VERSION);
  if (windows != nullptr) windows->ChooseLanguage(line.language);
  try {
    if (line.action == CommandLine::Action::kProfile) return RunProfile(line);
    const Ending ending = RunProgram(line, windows);
    // The end of the application object, and of Qt's own ones, would wait until the name servers answer; that of the
    // libraries would take from a thread that waits for a server or a disk what it works with.
    if (ending.leaves_thread) ExitNow(ending.exit_code);
    return ending.exit_code;
  } catch (const std::exception& error) {
    return FailToStart(error, line, windows);
  }
}

}  // namespace

int Launch(int argc, char** argv, WindowSystem* windows) noexcept {
  try {
    return DoLaunch(argc, argv, windows);
  } catch (const std::exception& error) {
    std::fprintf(stderr, "orvalis: %s\n", error.what());
    return kExitFailed;
  }
}

}  // namespace orvalis
