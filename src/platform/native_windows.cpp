#include <windows.h>

#include "platform/native.h"

// After windows.h, whose types they use.
#include <io.h>
#include <shellapi.h>
#include <shlwapi.h>

#include <QCoreApplication>
#include <QFile>
#include <array>
#include <cstdio>
#include <utility>

#include "platform/qt/ini_profile.h"
#include "platform/system/safe_file.h"
#include "platform/windows/com/com_server.h"
#include "platform/windows/com/weather_registration.h"
#include "platform/windows/com_port.h"
#include "platform/windows/device_port_finder.h"
#include "platform/windows/driver_objects.h"
#include "platform/windows/mci_sound_player.h"
#include "platform/windows/registry_profile.h"
#include "platform/windows/serial_object_port.h"
#include "platform/windows/serial_port_list.h"
#include "platform/windows/shell_program_starter.h"
#include "platform/windows/windows_error.h"

namespace orvalis::native {
namespace {

bool IsOpen(DWORD stream) {
  HANDLE const handle = GetStdHandle(stream);
  return handle != nullptr && handle != INVALID_HANDLE_VALUE && GetFileType(handle) != FILE_TYPE_UNKNOWN;
}

/// A program with windows has no console of its own. Started from one, it writes there, unless its streams are already
/// redirected.
void AttachToParentConsole() {
  struct Stream {
    std::FILE* file;
    const char* name;
    const char* mode;
    bool open;
  };
  const std::array streams{Stream{stdin, "CONIN$", "r", IsOpen(STD_INPUT_HANDLE)},
                           Stream{stdout, "CONOUT$", "w", IsOpen(STD_OUTPUT_HANDLE)},
                           Stream{stderr, "CONOUT$", "w", IsOpen(STD_ERROR_HANDLE)}};
  if (AttachConsole(ATTACH_PARENT_PROCESS) == 0) return;
  for (const Stream& stream : streams) {
    if (!stream.open) static_cast<void>(std::freopen(stream.name, stream.mode, stream.file));
  }
}

std::vector<std::string> Utf8Arguments() {
  int count = 0;
  LPWSTR* const words = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> arguments;
  arguments.reserve(static_cast<std::size_t>(count));
  for (int i = 0; i < count; ++i) arguments.push_back(Narrow(words[i]));
  LocalFree(words);
  // COM's switch for a program that it starts for a client.
  for (std::string& argument : arguments) {
    if (argument == "-Embedding" || argument == "/Embedding") argument = "--automation";
  }
  return arguments;
}

bool IsForSerialObject(const std::vector<std::string>& arguments) {
  return arguments.size() == 3 && arguments[1] == kSerialObjectService;
}

/// The two programs that convert and send pictures.
class MinimisedStarter : public CommandStarter {
 public:
  void Start(const std::string& command_line) override { StartCommandLine(command_line, StartWindow::kMinimised); }
};

/// On Windows external programs send the pictures.
class NoFtpSender : public FtpSender {
 public:
  void Send(const FtpUpload& /*upload*/, Done /*done*/) override {
    throw RunTimeError(RunTimeError::kDeviceUnavailable, "on Windows, external programs send the picture");
  }
  void Abandon() override {}
};

/// The system starts a program again that crashed or hung, if it had run for a minute.
class RestartAfterCrash : public ServiceManager {
 public:
  [[nodiscard]] bool Watches() const override { return false; }
  void Started() override {
    // Without the program's name, as it was called.
    const wchar_t* arguments = PathGetArgsW(GetCommandLineW());
    RegisterApplicationRestart(arguments, RESTART_NO_PATCH | RESTART_NO_REBOOT);
  }
  void Stopping() override { UnregisterApplicationRestart(); }
  void Tell(const std::string& /*status*/) override {}
};

}  // namespace

Process::Process(int /*argc*/, char** /*argv*/) : arguments_(Utf8Arguments()) {
  // The serial object's process ends with its parent, not with a console.
  if (!IsForSerialObject(arguments_)) AttachToParentConsole();
  // A drive without a disk is an error for the program to handle, not a message box that waits for a user.
  SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOOPENFILEERRORBOX);
  CheckCom("automation cannot be used", CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
}

Process::~Process() { CoUninitialize(); }

std::optional<int> RunService(const std::vector<std::string>& arguments) {
  if (const auto code = RunRegistration(arguments)) return code;
  if (!IsForSerialObject(arguments)) return std::nullopt;
  return RunSerialObject(arguments[2]);
}

ServiceUsage UsageOfServices() {
  return {.synopsis = {"-Embedding [--port PORT | --demo] [--profile DIR]", "/RegServer | /UnregServer"},
          .options =
              "  -Embedding      for Windows, which starts the program when a client asks for it; it ends with its "
              "last client\n"
              "  /RegServer      tells Windows where the program is, so that clients find it: for all users, or "
              "for you alone\n"
              "                  where more is not allowed\n"
              "  /UnregServer    undoes that\n"};
}

std::vector<std::string> QtArguments() {
  // Qt follows a dark desktop only when asked to.
  return {"-platform", "windows:darkmode=2"};
}

bool HasDisplay() { return true; }

bool StandardErrorIsTerminal() {
  DWORD mode = 0;
  return GetConsoleMode(GetStdHandle(STD_ERROR_HANDLE), &mode) != 0;
}

bool OutputsAreSame() {
  HANDLE const out = GetStdHandle(STD_OUTPUT_HANDLE);
  HANDLE const error = GetStdHandle(STD_ERROR_HANDLE);
  if (out == error) return true;
  DWORD mode = 0;
  if (GetConsoleMode(out, &mode) != 0 && GetConsoleMode(error, &mode) != 0) return true;
  BY_HANDLE_FILE_INFORMATION first{};
  BY_HANDLE_FILE_INFORMATION second{};
  return GetFileInformationByHandle(out, &first) != 0 && GetFileInformationByHandle(error, &second) != 0 &&
         first.dwVolumeSerialNumber == second.dwVolumeSerialNumber && first.nFileIndexHigh == second.nFileIndexHigh &&
         first.nFileIndexLow == second.nFileIndexLow;
}

bool ErrorsGoToSystemLog() { return false; }

std::string ErrorLinePrefix(EventLevel /*level*/) { return {}; }

std::unique_ptr<ServiceManager> MakeServiceManager() { return std::make_unique<RestartAfterCrash>(); }

void WriteSystemLog(const std::string& text) {
  HANDLE const log = RegisterEventSourceW(nullptr, kEventSource);
  if (log == nullptr) return;
  const std::wstring wide = Wide(text);
  const wchar_t* words = wide.c_str();
  ReportEventW(log, EVENTLOG_ERROR_TYPE, 0, kEventNumber, nullptr, 1, 0, &words, nullptr);
  DeregisterEventSource(log);
}

void DetachConsole() {
  // The streams first: the console's handles may soon be reused for other files.
  for (std::FILE* const stream : {stdin, stdout, stderr}) {
    const int number = _fileno(stream);
    if (number < 0 || _isatty(number) == 0) continue;
    static_cast<void>(std::freopen("NUL", stream == stdin ? "r" : "w", stream));
  }
  FreeConsole();
}

std::unique_ptr<Profile> MakeProfile(const std::optional<QString>& folder) {
  if (folder) return std::make_unique<IniProfile>(*folder);
  if (AutomationObject::IsRegistered(kDriverProfile)) return std::make_unique<DriverProfile>();
  return std::make_unique<RegistryProfile>();
}

std::unique_ptr<UtilityObject> MakeUtilityObject() {
  if (AutomationObject::IsRegistered(kDriverUtility)) return std::make_unique<DriverUtility>();
  return std::make_unique<NoUtilityObject>();
}

std::unique_ptr<SerialPort> MakeSerialPort() {
  if (AutomationObject::IsRegistered(kDriverSerial)) {
    return std::make_unique<SerialObjectPort>(QCoreApplication::applicationFilePath());
  }
  return std::make_unique<ComPort>();
}

std::unique_ptr<PortFinder> MakePortFinder() { return std::make_unique<DevicePortFinder>(); }

QString SimulatedUnitPort() { return {}; }

std::vector<SerialPortEntry> ListSerialPorts() { return orvalis::ListSerialPorts(); }

// What is wrong with a file shows when it is opened.
// NOLINTNEXTLINE(performance-unnecessary-value-param): the other system keeps it
std::string SystemPortName(const std::string& name) { return ComPortName(name); }

std::unique_ptr<SoundPlayer> MakeSoundPlayer(std::function<void(const std::string&)> /*fail*/) {
  return std::make_unique<MciSoundPlayer>();
}

std::unique_ptr<ProgramStarter> MakeProgramStarter() { return std::make_unique<ShellProgramStarter>(); }

std::unique_ptr<WeatherServer> MakeWeatherServer(WeatherServer::Parts parts) {
  return std::make_unique<ComServer>(std::move(parts));
}

bool OtherServesClients() { return ClassIsOffered(); }

PictureFolder FolderOfPictures(const std::string& folder) {
  return {.path = folder, .separator = '\\', .line_end = "\r\n"};
}

std::unique_ptr<CommandStarter> MakeCommandStarter() { return std::make_unique<MinimisedStarter>(); }

bool SendsPictures() { return false; }

std::unique_ptr<FtpSender> MakeFtpSender() { return std::make_unique<NoFtpSender>(); }

std::string ToCodePage(std::string_view utf8) {
  // The system's: the process's own is UTF-8, by its manifest.
  UINT code_page = CP_ACP;
  GetLocaleInfoEx(LOCALE_NAME_SYSTEM_DEFAULT, LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                  reinterpret_cast<wchar_t*>(&code_page), sizeof(code_page) / sizeof(wchar_t));
  const std::wstring wide = Wide(utf8);
  const int size = static_cast<int>(wide.size());
  std::string bytes(
      static_cast<std::size_t>(WideCharToMultiByte(code_page, 0, wide.data(), size, nullptr, 0, nullptr, nullptr)),
      '\0');
  WideCharToMultiByte(code_page, 0, wide.data(), size, bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
  return bytes;
}

void WritePrivateFile(const std::string& path, const std::string& text) {
  const QString name = QString::fromStdString(path);
  const QString fresh = name + ".new";
  QFile::remove(fresh);  // left over from a crash
  bool good = false;
  {
    QFile file(fresh);
    // Restrict access before writing.
    good = file.open(QIODevice::WriteOnly) && safe_file::RestrictToOwner(fresh) &&
           file.write(text.data(), static_cast<qint64>(text.size())) >= 0 && file.flush();
  }
  if (good && safe_file::Replace(fresh, name)) return;
  const RunTimeError failure(RunTimeError::kPathFileAccess,
                             "cannot write " + path + ": " + safe_file::ErrorText(safe_file::LastError()));
  QFile::remove(fresh);
  throw failure;
}

}  // namespace orvalis::native
