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
#include "platform/linux/qt_serial_port.h"
#include "platform/linux/serial_ports.h"
#include "platform/linux/sysfs_port_finder.h"
#include "platform/native.h"
#include "platform/qt/ini_profile.h"

namespace orvalis::native {

Process::Process(int argc, char** argv) : arguments_(argv, argv + argc) {
  // A reader that closes our output must not end the program.
  std::signal(SIGPIPE, SIG_IGN);
  std::signal(SIGXFSZ, SIG_IGN);  // a file that may not grow is like a full disk: it is reported
}

Process::~Process() = default;

std::optional<int> RunService(const std::vector<std::string>& /*arguments*/) { return std::nullopt; }

ServiceUsage UsageOfServices() {
  return {.synopsis = {"--automation [--port PORT | --demo] [--profile DIR]"},
          .options =
              "  --automation    for the session bus, which starts the program when a client asks for it; it ends "
              "with its last client\n"};
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

std::string SystemPortName(const std::string& name) { return DevicePath(name); }

std::unique_ptr<ProgramStarter> MakeProgramStarter() { return std::make_unique<DetachedPrograms>(); }

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
