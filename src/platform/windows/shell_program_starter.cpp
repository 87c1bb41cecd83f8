#include "platform/windows/shell_program_starter.h"

#include "platform/windows/handle.h"
#include "platform/windows/windows_error.h"

namespace orvalis {

void StartCommandLine(const std::string& command_line, StartWindow window, const std::string& folder) {
  std::wstring line = Wide(command_line);  // CreateProcess writes into it
  const std::wstring begin = Wide(folder);
  STARTUPINFOW start{};
  start.cb = sizeof(start);
  start.dwFlags = STARTF_USESHOWWINDOW;
  start.wShowWindow = window == StartWindow::kMinimised ? SW_SHOWMINNOACTIVE : SW_SHOWNORMAL;
  PROCESS_INFORMATION made{};
  if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_DEFAULT_ERROR_MODE | CREATE_NEW_CONSOLE,
                     nullptr, begin.empty() ? nullptr : begin.c_str(), &start, &made) == 0) {
    throw Win32Error(command_line + " cannot be started");
  }
  const Handle process(made.hProcess);
  const Handle thread(made.hThread);
}

void ShellProgramStarter::Start(const std::string& path) {
  const DWORD attributes = GetFileAttributesW(Wide(path).c_str());
  if (path.empty() || attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    throw RunTimeError(RunTimeError::kFileNotFound,
                       "program \"" + path + "\" not found; choose one in the setup dialog");
  }
  const auto separator = path.find_last_of("\\/");
  StartCommandLine("\"" + path + "\"", StartWindow::kNormal,
                   separator == std::string::npos ? "" : path.substr(0, separator + 1));
}

}  // namespace orvalis
