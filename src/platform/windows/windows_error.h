#pragma once

// windows.h first: it defines the types of the others.
#include <oaidl.h>
#include <windows.h>

#include <string>
#include <string_view>

#include "base/run_time_error.h"

namespace orvalis {

// Texts are UTF-8 in the program and UTF-16 in Windows calls.
[[nodiscard]] std::wstring Wide(std::string_view text);
[[nodiscard]] std::string Narrow(std::wstring_view text);

/// The system's text for an error code or an HRESULT, without the line end.
[[nodiscard]] std::string SystemText(DWORD error);

/// The error of a failed call, "`what`: the system's text". Its number depends on `error`.
[[nodiscard]] RunTimeError Win32Error(const std::string& what, DWORD error = GetLastError());
/// The same for an automation call. The called object's own text, in `said`, is preferred; `said` is cleared.
[[nodiscard]] RunTimeError ComError(const std::string& what, HRESULT result, EXCEPINFO* said = nullptr);

/// Throws `ComError` if the call failed.
inline void CheckCom(const std::string& what, HRESULT result) {
  if (FAILED(result)) throw ComError(what, result);
}

}  // namespace orvalis
