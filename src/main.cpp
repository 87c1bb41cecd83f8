// What the command line asks for: starts the program, or does the one thing and ends.

#include <QApplication>
#include <QCoreApplication>
#include <QIcon>
#include <QLocale>
#include <QMessageBox>
#include <QStandardPaths>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <memory>
#include <string>
#include <variant>
#include <vector>

#include "base/clock.h"
#include "config/profile_command.h"
#include "config/settings_store.h"
#include "platform/native.h"
#include "platform/qt/command_line.h"
#include "platform/qt/single_instance.h"
#include "platform/qt/user_time.h"
#include "platform/stop_signals.h"
#include "program.h"
#include "ui/desktop.h"
#include "ui/picker_process.h"

namespace orvalis {
namespace {

constexpr int kExitOk = 0;
constexpr int kExitFailed = 1;
constexpr int kExitUsage = 2;

/// A program whose last client has left may still be closing its link when the next client comes.
constexpr std::chrono::milliseconds kFormerEnds{5000};

int RunProfile(const CommandLine& line) {
  const std::unique_ptr<Profile> profile = native::MakeProfile(ChosenProfileFolder(line));
  SettingsStore store(*profile, ProgramFolder(), UserLocale());
  return RunProfileCommand(line.profile, store, std::cin, std::cout, std::cerr);
}

/// Says why the program cannot run; in a window too when a person started it and not from a terminal, because nobody
/// would see it otherwise. A client waits for the end of a program that was started for it, and nobody may be there to
/// close a window.
int FailToStart(const std::exception& error, const CommandLine& line) {
  StopSignals::EndAtOnce(kExitFailed);
  std::cerr << "orvalis: " << error.what() << '\n';
  const bool has_window = qobject_cast<QApplication*>(QCoreApplication::instance()) != nullptr &&
                          QGuiApplication::platformName() != "offscreen";
  if (has_window && !line.automation && !native::StandardErrorIsRead())
    QMessageBox::critical(nullptr, "Orvalis", QString::fromUtf8(error.what()));
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
    case SingleInstance::Start::kNameIsTaken:
      std::cerr << "orvalis: it runs already with the same settings and cannot be asked for its panel, because another "
                   "user of this machine has the name that it would answer at; stop that one, or use --profile\n";
      return kExitFailed;
    default:
      std::cerr << "orvalis: it runs already with the same settings and does not answer; stop that one, or use "
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
  bool leaves_thread = false;  ///< in a wait that cannot be stopped: a name look-up, or a disk
};

Ending RunProgram(const CommandLine& line, bool windowed) {
  // From here on: a signal that comes during the start is taken as soon as the event loop runs.
  Program* running = nullptr;
  const StopSignals stop_signals({.stop = [] { QCoreApplication::exit(kExitOk); },
                                  .session_ends =
                                      [&running] {
                                        if (running != nullptr) running->ShutDown();
                                      }});
  if (windowed) {
    QApplication::setQuitOnLastWindowClosed(false);
    QGuiApplication::setDesktopFileName("orvalis");
    QApplication::setWindowIcon(QIcon::fromTheme("orvalis"));
  }
  SingleInstance instance(FolderToMark(line));
  if (line.automation) {
    if (!instance.ClaimWithin(kFormerEnds)) {
      std::cerr << "orvalis: it runs already with the same settings, and clients cannot reach it\n";
      return {kExitFailed};
    }
  } else if (const auto start = instance.Claim(); start != SingleInstance::Start::kFirst) {
    return {LeaveToTheOther(start)};
  }
  Program program(line);
  running = &program;
  if (!instance.problem().isEmpty()) program.Note(instance.problem().toStdString());
  instance.OnAsked([&program] { return program.BringToFront(); });
  const int code = program.Run();
  return {code, program.LeavesThread()};
}

/// Ends the process where it stands. Nothing is left to do but what the system does anyway.
[[noreturn]] void EndHere(int code) {
  std::cout.flush();
  std::cerr.flush();
  std::fflush(nullptr);
  std::_Exit(code);
}

int Run(int argc, char** argv) {
  const native::Process process(argc, argv);
  if (const auto code = native::RunService(process.arguments())) return *code;
  if (IsPicker(process.arguments())) {
    StopSignals::LeaveToSystem();
    ServePicker(process.arguments());
  }
  const auto parsed = ParseCommandLine(process.arguments());
  const auto* wanted = std::get_if<CommandLine>(&parsed);
  if (wanted != nullptr && wanted->action == CommandLine::Action::kRun) {
    StopSignals::EndAtOnce(kExitOk);
  } else {
    StopSignals::LeaveToSystem();
  }
  if (const auto* error = std::get_if<CommandLineError>(&parsed)) {
    std::cerr << "orvalis: " << error->text << '\n' << Usage();
    return kExitUsage;
  }
  auto line = std::get<CommandLine>(parsed);
  if (line.action == CommandLine::Action::kHelp) {
    std::cout << Usage();
    return kExitOk;
  }
  if (line.action == CommandLine::Action::kVersion) {
    std::cout << "Orvalis " ORVALIS_VERSION "\n";
    return kExitOk;
  }
  // A bus that was started without a desktop starts the program without one too.
  if (line.automation && !native::DisplayExpected()) line.headless = true;
  const bool windowed = line.action == CommandLine::Action::kRun && !line.headless;
  if (windowed && !native::DisplayExpected()) {
    std::cerr << "orvalis: there is no display for the panel; start it in a desktop, or with --headless\n";
    return kExitFailed;
  }
  // The words of the command line are ours; Qt gets the program's name, and what it needs to know of the system.
  std::vector<std::string> qt_words = native::WindowArguments();
  std::vector<char*> qt_argv{argv[0]};
  for (std::string& word : qt_words) qt_argv.push_back(word.data());
  int qt_argc = windowed ? static_cast<int>(qt_argv.size()) : 1;
  qt_argv.push_back(nullptr);
  const QtMessageHandler former_handler = qInstallMessageHandler(ExplainNoDisplay);
  const std::unique_ptr<QCoreApplication> application =
      windowed ? std::make_unique<QApplication>(qt_argc, qt_argv.data())
               : std::make_unique<QCoreApplication>(qt_argc, qt_argv.data());
  qInstallMessageHandler(former_handler);
  if (windowed) {
    desktop::Prepare();
    if (desktop::PickersHoldUp()) UsePickerProcess(QCoreApplication::applicationFilePath());
  }
  UseTimeStyle(TimeStyleOf(QLocale::system()));
  QCoreApplication::setApplicationName("orvalis");
  QCoreApplication::setApplicationVersion(ORVALIS_VERSION);
  try {
    if (line.action == CommandLine::Action::kProfile) return RunProfile(line);
    const Ending ending = RunProgram(line, windowed);
    // The end of the application object, and of Qt's own ones, would wait until the name servers answer, and take away
    // what a thread that waits for a disk needs when it goes on.
    if (ending.leaves_thread) EndHere(ending.exit_code);
    return ending.exit_code;
  } catch (const std::exception& error) {
    return FailToStart(error, line);
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
