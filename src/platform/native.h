#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/alerts.h"
#include "app/service_manager.h"
#include "base/event_list.h"
#include "config/profile.h"
#include "config/utility_object.h"
#include "platform/qt/command_line.h"
#include "publish/webcam_upload.h"
#include "server/weather_server.h"
#include "unit/serial_adapter.h"
#include "unit/serial_port.h"
#include "unit/serial_port_entry.h"

/// What each operating system provides in its own way. The build chooses the implementation: native_linux.cpp or
/// native_windows.cpp.
namespace orvalis::native {

/// The process as the system sees it. Created first and kept as long as the process runs.
class Process {
 public:
  Process(int argc, char** argv);
  Process(const Process&) = delete;
  Process& operator=(const Process&) = delete;
  ~Process();

  /// The command line arguments in UTF-8, the program name first.
  [[nodiscard]] const std::vector<std::string>& arguments() const { return arguments_; }

 private:
  std::vector<std::string> arguments_;
};

/// Runs a service specific to this system if the command line asks for one, and returns its exit code; otherwise
/// nothing.
[[nodiscard]] std::optional<int> RunService(const std::vector<std::string>& arguments);

/// How the program is started for clients, and made known to them, for the usage.
[[nodiscard]] ServiceUsage UsageOfServices();

/// What Qt is told on the command line of a program with windows, its name left out.
[[nodiscard]] std::vector<std::string> QtArguments();
/// Whether there should be a display to show windows on.
[[nodiscard]] bool HasDisplay();
/// Whether standard error is a terminal.
[[nodiscard]] bool StandardErrorIsTerminal();
/// Whether standard output and standard error go to the same place, so that a line on both would appear twice.
[[nodiscard]] bool OutputsAreSame();

/// Whether standard error is read by the system's log, of which each line becomes an entry.
[[nodiscard]] bool ErrorsGoToSystemLog();
/// What tells that log how much a line on standard error matters; "" where it goes elsewhere.
[[nodiscard]] std::string ErrorLinePrefix(EventLevel level);

/// What the program is watched by. Made once.
[[nodiscard]] std::unique_ptr<ServiceManager> MakeServiceManager();

/// Records an error in the system's log. Does nothing on a system that logs the standard error of the programs it
/// starts.
void WriteSystemLog(const std::string& text);

/// Detaches from the terminal that the program was started from, if closing it would end the program. Nothing is
/// printed there from then on.
void DetachConsole();

/// The system's settings store, or a file in `folder` if one is given.
[[nodiscard]] std::unique_ptr<Profile> MakeProfile(const std::optional<QString>& folder);
[[nodiscard]] std::unique_ptr<UtilityObject> MakeUtilityObject();
[[nodiscard]] std::unique_ptr<SerialPort> MakeSerialPort();
[[nodiscard]] std::unique_ptr<PortFinder> MakePortFinder();
/// The machine's current serial ports, with the devices attached to them.
[[nodiscard]] std::vector<SerialPortEntry> ListSerialPorts();
/// Where the guide has the simulated unit make its line; "" on a system that it does not run on.
[[nodiscard]] QString SimulatedUnitPort();
/// The system's name of the port that the key "COM Port" calls `name`, as `SerialPort::Port` returns it. Throws
/// RunTimeError kFileNotFound for a name that no port can have.
[[nodiscard]] std::string SystemPortName(const std::string& name);
/// `fail` is called for a file that proves only while loading not to be a sound. On Linux the executable chooses by
/// what it links: the desktop's sounds (native_desktop.cpp), or a player program (native_headless.cpp).
[[nodiscard]] std::unique_ptr<SoundPlayer> MakeSoundPlayer(std::function<void(const std::string&)> fail);
[[nodiscard]] std::unique_ptr<ProgramStarter> MakeProgramStarter();

/// The server for clients; null on a system without one.
[[nodiscard]] std::unique_ptr<WeatherServer> MakeWeatherServer(WeatherServer::Parts parts);

/// Whether another program is already serving clients when this one was started for a client. Never on a system that
/// starts one program for all clients.
[[nodiscard]] bool OtherServesClients();

/// How the system writes paths and lines in the program's `folder`.
[[nodiscard]] PictureFolder FolderOfPictures(const std::string& folder);
[[nodiscard]] std::unique_ptr<CommandStarter> MakeCommandStarter();
/// Whether built-in FTP is available. If not, the FTP sender refuses.
[[nodiscard]] bool SendsPictures();
[[nodiscard]] std::unique_ptr<FtpSender> MakeFtpSender();
/// `utf8` converted to the system's single-byte code page, with "?" for characters that it lacks. On Linux unchanged.
[[nodiscard]] std::string ToCodePage(std::string_view utf8);
/// Writes `text` into a file that only its owner can read, at any moment. A reader finds the complete file, old or new.
/// Throws RunTimeError kPathFileAccess.
void WritePrivateFile(const std::string& path, const std::string& text);

}  // namespace orvalis::native
