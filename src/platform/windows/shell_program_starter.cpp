#include "platform/windows/shell_program_starter.h"

#include <QProcessEnvironment>
#include <array>
#include <cstdio>
#include <memory>
#include <optional>

#include "platform/windows/windows_error.h"

namespace orvalis {
namespace {

/// Ours, with the facts in place of what they replace.
std::wstring EnvironmentWith(const AlertFacts& facts) {
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  for (const AlertFact& fact : facts) {
    const QString name = QString::fromStdString(fact.name);
    if (fact.value) {
      environment.insert(name, QString::fromStdString(*fact.value));
    } else {
      environment.remove(name);
    }
  }
  std::wstring block;
  for (const QString& variable : environment.toStringList()) {
    block += variable.toStdWString();
    block += L'\0';
  }
  return block;
}

std::string FailureOf(DWORD code) {
  if (code == 0) return {};
  constexpr DWORD kFirstException = 0xC0000000;
  if (code < kFirstException) return "ended with code " + std::to_string(code);
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "crashed (0x%08lX)", code);
  return text.data();
}

std::optional<std::string> LookAt(const Handle& process) {
  if (WaitForSingleObject(process.get(), 0) == WAIT_TIMEOUT) return std::nullopt;
  DWORD code = 0;
  return GetExitCodeProcess(process.get(), &code) != 0 ? FailureOf(code) : std::string();
}

}  // namespace

Handle StartCommandLine(const std::string& command_line, StartWindow window, const StartPlace& place) {
  std::wstring line = Wide(command_line);  // CreateProcess writes into it
  const std::wstring begin = Wide(place.folder);
  std::wstring environment = place.environment;
  STARTUPINFOW start{};
  start.cb = sizeof(start);
  start.dwFlags = STARTF_USESHOWWINDOW;
  start.wShowWindow = window == StartWindow::kMinimised ? SW_SHOWMINNOACTIVE : SW_SHOWNORMAL;
  PROCESS_INFORMATION made{};
  if (CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE,
                     CREATE_DEFAULT_ERROR_MODE | CREATE_NEW_CONSOLE | CREATE_UNICODE_ENVIRONMENT,
                     environment.empty() ? nullptr : environment.data(), begin.empty() ? nullptr : begin.c_str(),
                     &start, &made) == 0) {
    throw Win32Error(command_line + " cannot be started");
  }
  const Handle thread(made.hThread);
  return Handle(made.hProcess);
}

void ShellProgramStarter::Start(const Call& call) {
  const std::string& path = call.path;
  const DWORD attributes = GetFileAttributesW(Wide(path).c_str());
  if (path.empty() || attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0) {
    throw RunTimeError(RunTimeError::kFileNotFound,
                       "program \"" + path + "\" not found; choose one in the setup dialog");
  }
  const auto separator = path.find_last_of("\\/");
  const auto process = std::make_shared<Handle>(
      StartCommandLine("\"" + path + "\"", StartWindow::kNormal,
                       {.folder = separator == std::string::npos ? "" : path.substr(0, separator + 1),
                        .environment = EnvironmentWith(call.facts)}));
  running_.Add([process] { return LookAt(*process); }, call.ended);
}

}  // namespace orvalis
