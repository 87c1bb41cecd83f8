#include "platform/system/line_output.h"

#include "platform/windows/windows_error.h"

namespace orvalis {

void LineOutput::Write(const std::string& line) {
  HANDLE const handle = GetStdHandle(stream_ == Stream::kOutput ? STD_OUTPUT_HANDLE : STD_ERROR_HANDLE);
  if (handle == nullptr || handle == INVALID_HANDLE_VALUE) return;
  const std::string bytes = line + "\r\n";
  DWORD written = 0;
  DWORD mode = 0;
  if (GetConsoleMode(handle, &mode) != 0) {
    const std::wstring letters = Wide(bytes);
    WriteConsoleW(handle, letters.data(), static_cast<DWORD>(letters.size()), &written, nullptr);
    return;
  }
  if (GetFileType(handle) == FILE_TYPE_PIPE) {
    // A full pipe then drops the line instead of blocking. Set each time, because other processes may share the pipe.
    DWORD at_once = PIPE_READMODE_BYTE | PIPE_NOWAIT;
    SetNamedPipeHandleState(handle, &at_once, nullptr, nullptr);
  }
  WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
}

}  // namespace orvalis
