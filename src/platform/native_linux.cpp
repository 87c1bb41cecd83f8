#include <sys/stat.h>
#include <unistd.h>

#include <QStandardPaths>
#include <QtGlobal>
#include <csignal>
#include <utility>

#include "platform/linux/command_starter.h"
#include "platform/linux/dbus/weather_service.h"
#include "platform/linux/detached_programs.h"
#include "platform/linux/private_file.h"
#include "platform/linux/program_runner.h"
#include "platform/linux/qt_serial_port.h"
#include "platform/linux/serial_ports.h"
#include "platform/linux/sysfs_port_finder.h"
#include "platform/linux/systemd_manager.h"
#include "platform/native.h"
#include "platform/qt/ini_profile.h"
#include "platform/system/stop_signals.h"

namespace orvalis::native {

Process::Process(int argc, char** argv) : arguments_(argv, argv + argc) {
  // A reader that closes our output must not end the program.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is like a full disk: it is reported
}

Process::~Process() = default;

std::optional<int> RunService(const std::vector<std::string>& arguments) {
  if (arguments.size() != 2 || arguments[1] != "--run-program") return std::nullopt;
  StopSignals::RestoreDefault();
  return RunOneProgram(STDIN_FILENO);
}

ServiceUsage UsageOfServices() {
  return {.synopsis = {"--automation [--port PORT | --demo] [--profile DIR]", "--run-program"},
          .options =
              "  --automation    for the session bus, which starts the program when a client asks for it; it ends "
              "with its last client\n"
              "  --run-program   for systemd, which starts it to run one alert program outside the service\n"};
}

std::vector<std::string> QtArguments() { return {}; }

bool HasDisplay() {
  return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY") ||
         !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
}

bool StandardErrorIsTerminal() { return isatty(STDERR_FILENO) == 1; }

bool OutputsAreSame() {
  struct stat out {};
  struct stat error {};
  return fstat(STDOUT_FILENO, &out) == 0 && fstat(STDERR_FILENO, &error) == 0 && out.st_dev == error.st_dev &&
         out.st_ino == error.st_ino;
}

bool ErrorsGoToSystemLog() { return ErrorsGoToJournal(); }

std::string ErrorLinePrefix(EventLevel level) {
  switch (level) {  // as syslog numbers them
    case EventLevel::kError:
      return JournalPrefix(3);
    case EventLevel::kWarning:
      return JournalPrefix(4);
    default:
      return JournalPrefix(5);
  }
}

std::unique_ptr<ServiceManager> MakeServiceManager() { return std::make_unique<SystemdManager>(); }

// What a program writes to standard error is in the journal.
void WriteSystemLog(const std::string& /*text*/) {}

// Shells keep background jobs running, so there is nothing to do.
void DetachConsole() {}

std::unique_ptr<Profile> MakeProfile(const std::optional<QString>& folder) {
  return std::make_unique<IniProfile>(folder ? *folder
                                             : QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation));
}

std::unique_ptr<UtilityObject> MakeUtilityObject() { return std::make_unique<NoUtilityObject>(); }

std::unique_ptr<SerialPort> MakeSerialPort() { return std::make_unique<QtSerialPort>(); }

std::unique_ptr<PortFinder> MakePortFinder() { return std::make_unique<SysfsPortFinder>(); }

std::vector<SerialPortEntry> ListSerialPorts() { return orvalis::ListSerialPorts(); }

QString SimulatedUnitPort() { return "/tmp/unit"; }

std::string SystemPortName(const std::string& name) { return DevicePath(name); }

std::unique_ptr<ProgramStarter> MakeProgramStarter() {
  const std::string runner = qgetenv("ORVALIS_PROGRAM_RUNNER").toStdString();
  if (runner.empty()) return std::make_unique<DetachedPrograms>();
  return std::make_unique<RunnerPrograms>(runner);
}

std::unique_ptr<WeatherServer> MakeWeatherServer(WeatherServer::Parts parts) {
  return std::make_unique<WeatherService>(std::move(parts));
}

// The bus starts one program for all who ask.
bool OtherServesClients() { return false; }

PictureFolder FolderOfPictures(const std::string& folder) { return {.path = folder}; }

std::unique_ptr<CommandStarter> MakeCommandStarter() { return std::make_unique<PathCommandStarter>(); }

bool SendsPictures() { return true; }

std::string ToCodePage(std::string_view utf8) { return std::string(utf8); }

void WritePrivateFile(const std::string& path, const std::string& text) { orvalis::WritePrivateFile(path, text); }

}  // namespace orvalis::native
