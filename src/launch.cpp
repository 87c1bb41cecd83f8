#include "launch.h"

#include <QLocale>
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
#include "config/settings_store.h"
#include "platform/native.h"
#include "platform/qt/command_line.h"
#include "platform/qt/single_instance.h"
#include "platform/qt/user_time.h"
#include "platform/system/stop_signals.h"

namespace orvalis {
namespace {

constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

/// A program whose last client has left may still be closing its link when the next client comes.
constexpr std::chrono::milliseconds kPreviousEnds{5000};

int RunProfile(const CommandLine& line) {
  const std::unique_ptr<Profile> profile = native::MakeProfile(ChosenProfileFolder(line));
  SettingsStore store(*profile, ProgramFolder(), UserLocale());
  return RunProfileCommand(line.profile, store, std::cin, std::cout, std::cerr);
}

/// Says why the program cannot run; in a window too when a person started it and not from a terminal, because nobody
/// would see it otherwise. A client waits for the end of a program that was started for it, and nobody may be there to
/// close a window.
int FailToStart(const std::exception& error, const CommandLine& line, WindowSystem* windows) {
  StopSignals::EndAtOnce(kExitFailed);
  std::cerr << "orvalis: " << error.what() << '\n';
  if (windows != nullptr && !line.automation && !native::StandardErrorIsRead()) {
    windows->ShowError(QString::fromUtf8(error.what()));
  }
  return kExitFailed;
}

/// Another program has the profile. Returns the exit code of this one.
int DeferToRunningInstance(SingleInstance::Start start) {
  switch (start) {
    case SingleInstance::Start::kPanelBroughtUp:
      std::cerr << "orvalis: already running; its panel was brought to the front\n";
      return kExitOk;
    case SingleInstance::Start::kOtherHasNoPanel:
      std::cerr << "orvalis: already running, headless, with the same settings; stop that one, or use --profile\n";
      return kExitFailed;
    case SingleInstance::Start::kNameIsTaken:
      std::cerr << "orvalis: already running with the same settings, and cannot be asked for its panel, because "
                   "another user of this machine has the name that it would answer at; stop that one, or use "
                   "--profile\n";
      return kExitFailed;
    default:
      std::cerr << "orvalis: already running with the same settings and does not answer; stop that one, or use "
                   "--profile\n";
      return kExitFailed;
  }
}

/// The program that has the profile marks its folder; the system's own store is marked in the user's folder.
QString FolderToMark(const CommandLine& line) {
  return ChosenProfileFolder(line).value_or(QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
}

/// Qt aborts when it finds no display to draw on; a person needs to know what to do instead.
void ExplainNoDisplay(QtMsgType type, const QMessageLogContext& /*context*/, const QString& text) {
  std::fprintf(stderr, "%s\n", qUtf8Printable(text));
  if (type != QtFatalMsg) return;
  std::fputs("orvalis: the display cannot be used; start it in a desktop, or with --headless\n", stderr);
  std::_Exit(kExitFailed);
}

/// How the program has ended.
struct Ending {
  int exit_code;
  bool leaves_thread = false;
};

Ending RunProgram(const CommandLine& line, WindowSystem* windows) {
  // From here on: a signal that comes during the start is taken as soon as the event loop runs.
  Core* running = nullptr;
  const StopSignals stop_signals({.stop = [] { QCoreApplication::exit(kExitOk); },
                                  .session_ends =
                                      [&running] {
                                        if (running != nullptr) running->ShutDown();
                                      }});
  SingleInstance instance(FolderToMark(line));
  if (line.automation) {
    if (!instance.ClaimWithin(kPreviousEnds)) {
      std::cerr << "orvalis: already running with the same settings, and clients cannot reach it\n";
      return {kExitFailed};
    }
  } else if (const auto start = instance.Claim(); start != SingleInstance::Start::kFirst) {
    return {DeferToRunningInstance(start)};
  }
  Core core(line);
  running = &core;
  if (!instance.problem().isEmpty()) core.Note(instance.problem().toStdString());
  const std::unique_ptr<Front> front = windows != nullptr ? windows->MakeWindows(core) : nullptr;
  instance.OnAsked([&front] {
    if (front) front->BringToFront();
    return front != nullptr;
  });
  const int code = core.Run(front.get());
  return {code, core.LeavesThread()};
}

/// Ends the process where it stands. Nothing is left to do but what the system does anyway.
[[noreturn]] void EndHere(int code) {
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

/// What is answered without an application object: a mistake, the help, the version.
std::optional<int> AnswerAtOnce(const std::variant<CommandLine, CommandLineError>& parsed, bool has_windows) {
  if (const auto* error = std::get_if<CommandLineError>(&parsed)) {
    std::cerr << "orvalis: " << error->text << '\n' << Usage(has_windows);
    return kExitUsage;
  }
  switch (std::get<CommandLine>(parsed).action) {
    case CommandLine::Action::kHelp:
      std::cout << Usage(has_windows);
      return kExitOk;
    case CommandLine::Action::kVersion:
      std::cout << "Orvalis " ORVALIS_VERSION "\n";
      return kExitOk;
    default:
      return std::nullopt;
  }
}

int DoLaunch(int argc, char** argv, WindowSystem* windows) {
  const native::Process process(argc, argv);
  if (const auto code = native::RunService(process.arguments())) return *code;
  if (windows != nullptr) windows->Serve(process.arguments());
  const auto parsed = ParseCommandLine(process.arguments(), windows != nullptr);
  const auto* wanted = std::get_if<CommandLine>(&parsed);
  if (wanted != nullptr && wanted->action == CommandLine::Action::kRun) {
    StopSignals::EndAtOnce(kExitOk);
  } else {
    StopSignals::LeaveToSystem();
  }
  if (const auto code = AnswerAtOnce(parsed, windows != nullptr)) return *code;
  auto line = std::get<CommandLine>(parsed);
  const bool shows_windows = windows != nullptr && line.action == CommandLine::Action::kRun && !line.headless;
  if (shows_windows && !native::DisplayExpected()) {
    if (!line.automation) {
      std::cerr << "orvalis: there is no display for the panel; start it in a desktop, or with --headless\n";
      return kExitFailed;
    }
    line.headless = true;  // a bus that was started without a desktop starts the program without one too
  }
  if (line.headless || line.action != CommandLine::Action::kRun) windows = nullptr;
  // The words of the command line are ours; Qt gets the program's name, and what it needs to know of the system.
  std::vector<std::string> qt_words = native::WindowArguments();
  std::vector<char*> qt_argv{argv[0]};
  for (std::string& word : qt_words) qt_argv.push_back(word.data());
  int qt_argc = windows != nullptr ? static_cast<int>(qt_argv.size()) : 1;
  qt_argv.push_back(nullptr);
  const std::unique_ptr<QCoreApplication> application = MakeApplication(qt_argc, qt_argv.data(), windows);
  UseTimeStyle(TimeStyleOf(QLocale::system()));
  QCoreApplication::setApplicationName("orvalis");
  QCoreApplication::setApplicationVersion(ORVALIS_VERSION);
  try {
    if (line.action == CommandLine::Action::kProfile) return RunProfile(line);
    const Ending ending = RunProgram(line, windows);
    // The end of the application object, and of Qt's own ones, would wait until the name servers answer; that of the
    // libraries would take from a thread that waits for a server or a disk what it works with.
    if (ending.leaves_thread) EndHere(ending.exit_code);
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
