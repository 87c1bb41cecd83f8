#pragma once

// Windows' own header first: it defines the types of the others.
#include <oaidl.h>
#include <windows.h>

#include <string>
#include <string_view>

#include "base/run_time_error.h"

namespace orvalis {

// Texts are UTF-8 in the program and UTF-16 in Windows' calls.
[[nodiscard]] std::wstring Wide(std::string_view text);
[[nodiscard]] std::string Narrow(std::wstring_view text);

/// Windows' own words for an error code or an HRESULT, without the line's end.
[[nodiscard]] std::string SystemText(DWORD error);

/// The error of a failed call, "`what`: the system's words". The number is chosen by `error`.
[[nodiscard]] RunTimeError Win32Error(const std::string& what, DWORD error = GetLastError());
/// The same for an automation call. What the called object said for itself, in `said`, is preferred; it is emptied.
[[nodiscard]] RunTimeError ComError(const std::string& what, HRESULT result, EXCEPINFO* said = nullptr);

/// Throws what `ComError` makes of a failure.
inline void CheckCom(const std::string& what, HRESULT result) {
  if (FAILED(result)) throw ComError(what, result);
}

}  // namespace orvalis
