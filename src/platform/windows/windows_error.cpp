#include "platform/windows/windows_error.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>

namespace orvalis {
namespace {

struct Row {
  DWORD error;
  RunTimeError::Number number;
};

constexpr std::array kWin32Numbers{
    Row{ERROR_FILE_NOT_FOUND, RunTimeError::kFileNotFound},
    Row{ERROR_PATH_NOT_FOUND, RunTimeError::kFileNotFound},
    Row{ERROR_ACCESS_DENIED, RunTimeError::kPermissionDenied},
    Row{ERROR_SHARING_VIOLATION, RunTimeError::kPermissionDenied},
    Row{ERROR_NOT_READY, RunTimeError::kDeviceUnavailable},
    Row{ERROR_GEN_FAILURE, RunTimeError::kDeviceUnavailable},
};

const std::array kComNumbers{
    Row{static_cast<DWORD>(REGDB_E_CLASSNOTREG), RunTimeError::kCannotCreateObject},
    Row{static_cast<DWORD>(CO_E_CLASSSTRING), RunTimeError::kCannotCreateObject},
    Row{static_cast<DWORD>(CO_E_SERVER_EXEC_FAILURE), RunTimeError::kCannotCreateObject},
    Row{static_cast<DWORD>(DISP_E_UNKNOWNNAME), RunTimeError::kNoSuchMember},
    Row{static_cast<DWORD>(DISP_E_MEMBERNOTFOUND), RunTimeError::kNoSuchMember},
    Row{static_cast<DWORD>(DISP_E_TYPEMISMATCH), RunTimeError::kTypeMismatch},
    Row{static_cast<DWORD>(DISP_E_OVERFLOW), RunTimeError::kOverflow},
};

template <typename Rows>
RunTimeError::Number NumberOf(const Rows& rows, DWORD error, RunTimeError::Number otherwise) {
  const auto found = std::find_if(rows.begin(), rows.end(), [&](const Row& row) { return row.error == error; });
  return found == rows.end() ? otherwise : found->number;
}

/// Takes the text out of `text` and frees it.
std::string Take(BSTR& text) {
  std::string taken = text == nullptr ? std::string() : Narrow({text, SysStringLen(text)});
  SysFreeString(text);
  text = nullptr;
  return taken;
}

}  // namespace

std::wstring Wide(std::string_view text) {
  const int size = static_cast<int>(text.size());
  std::wstring wide(static_cast<std::size_t>(MultiByteToWideChar(CP_UTF8, 0, text.data(), size, nullptr, 0)), L'\0');
  MultiByteToWideChar(CP_UTF8, 0, text.data(), size, wide.data(), static_cast<int>(wide.size()));
  return wide;
}

std::string Narrow(std::wstring_view text) {
  const int size = static_cast<int>(text.size());
  const int needed = WideCharToMultiByte(CP_UTF8, 0, text.data(), size, nullptr, 0, nullptr, nullptr);
  std::string narrow(static_cast<std::size_t>(needed), '\0');
  WideCharToMultiByte(CP_UTF8, 0, text.data(), size, narrow.data(), needed, nullptr, nullptr);
  return narrow;
}

std::string SystemText(DWORD error) {
  std::array<wchar_t, 512> words{};
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, error, 0,
                                      words.data(), static_cast<DWORD>(words.size()), nullptr);
  std::string text = Narrow({words.data(), length});
  text.erase(text.find_last_not_of(" .\r\n") + 1);
  if (!text.empty()) return text;
  std::array<char, 32> number{};
  std::snprintf(number.data(), number.size(), "error 0x%08lX", error);
  return number.data();
}

RunTimeError Win32Error(const std::string& what, DWORD error) {
  return {NumberOf(kWin32Numbers, error, RunTimeError::kPathFileAccess), what + ": " + SystemText(error)};
}

RunTimeError ComError(const std::string& what, HRESULT result, EXCEPINFO* said) {
  std::string words;
  if (result == DISP_E_EXCEPTION && said != nullptr) {
    if (said->pfnDeferredFillIn != nullptr) said->pfnDeferredFillIn(said);
    words = Take(said->bstrDescription);
    static_cast<void>(Take(said->bstrSource));
    static_cast<void>(Take(said->bstrHelpFile));
    if (said->scode != 0) result = said->scode;
  }
  if (words.empty()) words = SystemText(static_cast<DWORD>(result));
  return {NumberOf(kComNumbers, static_cast<DWORD>(result), RunTimeError::kAutomationError), what + ": " + words};
}

}  // namespace orvalis
