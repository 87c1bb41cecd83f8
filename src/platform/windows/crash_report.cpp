#include "platform/system/crash_report.h"

#include <windows.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <string>

#include "logs/crash_note.h"
#include "logs/error_log.h"

namespace orvalis::crash_report {
namespace {

using Path = std::array<wchar_t, 1024>;

// An exception filter can use only globals. They are written once, before it is installed.
Path g_log{};
Path g_note{};

void Append(const Path& path, const char* text, int size) {
  const HANDLE file = CreateFileW(path.data(), FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                  OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  DWORD written = 0;
  WriteFile(file, text, static_cast<DWORD>(size), &written, nullptr);
  CloseHandle(file);
}

/// Formats into the stack and writes to both files: the fault may be in what gives memory out.
template <typename... Values>
void Write(const char* format, Values... values) {
  std::array<char, 200> text{};
  const int size = std::snprintf(text.data(), text.size(), format, values...);
  if (size <= 0) return;
  const int most = static_cast<int>(text.size()) - 1;
  Append(g_log, text.data(), std::min(size, most));
  Append(g_note, text.data(), std::min(size, most));
}

/// What the frames of the backtrace are: the offset in the file of the program finds the line in the source.
void WriteFrames() {
  std::array<void*, 40> frames{};
  const USHORT count = CaptureStackBackTrace(0, static_cast<DWORD>(frames.size()), frames.data(), nullptr);
  const auto base = reinterpret_cast<std::uintptr_t>(GetModuleHandleW(nullptr));
  for (USHORT i = 0; i < count; ++i) {
    const auto address = reinterpret_cast<std::uintptr_t>(frames[i]);
    Write("%p (program+0x%llx)\r\n", frames[i], static_cast<unsigned long long>(address - base));
  }
}

void Report(unsigned long code) {
  SYSTEMTIME now{};
  GetSystemTime(&now);
  Write("%04d-%02d-%02dT%02d:%02d:%02dZ  a fault ended the program (version " ORVALIS_VERSION "): 0x%08lx\r\n",
        static_cast<int>(now.wYear), static_cast<int>(now.wMonth), static_cast<int>(now.wDay),
        static_cast<int>(now.wHour), static_cast<int>(now.wMinute), static_cast<int>(now.wSecond), code);
  WriteFrames();
}

LONG WINAPI Filter(EXCEPTION_POINTERS* exception) {
  Report(exception->ExceptionRecord->ExceptionCode);
  return EXCEPTION_CONTINUE_SEARCH;
}

/// The runtime ends the program after it.
void Aborted(int /*signal*/) {
  constexpr unsigned long kFatalAppExit = 0x40000015;  // STATUS_FATAL_APP_EXIT
  Report(kFatalAppExit);
}

bool Keep(const std::filesystem::path& file, Path& path) {
  const std::wstring& name = file.native();
  if (name.size() >= path.size()) return false;
  std::ranges::copy(name, path.begin());
  return true;
}

}  // namespace

void EmptyDumps() {
  using SetFlags = HRESULT(WINAPI*)(DWORD flags);
  constexpr DWORD kNoHeap = 1;  // WER_FAULT_REPORTING_FLAG_NOHEAP; the header needs a newer system than the program
  const auto set_flags = reinterpret_cast<SetFlags>(
      reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "WerSetFlags")));
  if (set_flags != nullptr) set_flags(kNoHeap);
}

void Arm(const std::filesystem::path& folder) {
  if (!Keep(folder / kErrorLogFile, g_log) || !Keep(folder / kCrashNoteFile, g_note)) return;
  ULONG room = 65'536;  // for the filter, where the fault is that the stack is full
  SetThreadStackGuarantee(&room);
  SetUnhandledExceptionFilter(Filter);
  std::signal(SIGABRT, Aborted);
}

}  // namespace orvalis::crash_report
