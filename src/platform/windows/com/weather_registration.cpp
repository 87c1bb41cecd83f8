#include "platform/windows/com/weather_registration.h"

#include <initguid.h>

#include <array>
#include <iostream>
#include <string_view>

#include "platform/windows/windows_error.h"
#include "weather_idl.h"

namespace orvalis {
namespace {

constexpr std::wstring_view kProgId = L"Orvalis.Weather";
constexpr const wchar_t* kDescription = L"Orvalis weather server";

struct TypeLibrary {
  ITypeLib* library = nullptr;
  TypeLibrary() = default;
  TypeLibrary(const TypeLibrary&) = delete;
  TypeLibrary& operator=(const TypeLibrary&) = delete;
  ~TypeLibrary() {
    if (library != nullptr) library->Release();
  }
};

std::wstring ExecutablePath() {
  constexpr std::size_t kLongestPath = 32768;
  std::wstring path(kLongestPath, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

std::wstring GuidText(const GUID& guid) {
  constexpr int kLength = 39;
  std::array<wchar_t, kLength> text{};
  StringFromGUID2(guid, text.data(), kLength);
  return text.data();
}

void LoadLibraryInto(TypeLibrary& type_library) {
  CheckCom("the type library cannot be read",
           LoadTypeLibEx(ExecutablePath().c_str(), REGKIND_NONE, &type_library.library));
}

void CheckWin32(const std::string& what, LSTATUS status) {
  if (status != ERROR_SUCCESS) throw Win32Error(what, static_cast<DWORD>(status));
}

/// Where the classes of all users, or of this one, are registered.
class ClassesRoot {
 public:
  explicit ClassesRoot(HKEY hive) {
    CheckWin32("the registry cannot be written",
               RegCreateKeyExW(hive, L"Software\\Classes", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &key_, nullptr));
  }
  ClassesRoot(const ClassesRoot&) = delete;
  ClassesRoot& operator=(const ClassesRoot&) = delete;
  ~ClassesRoot() { RegCloseKey(key_); }

  void Set(const std::wstring& path, const std::wstring& name, const std::wstring& value) const {
    const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    CheckWin32(
        "the registry cannot be written",
        RegSetKeyValueW(key_, path.c_str(), name.empty() ? nullptr : name.c_str(), REG_SZ, value.c_str(), bytes));
  }
  void Remove(const std::wstring& path) const {
    const LSTATUS status = RegDeleteTreeW(key_, path.c_str());
    if (status != ERROR_FILE_NOT_FOUND) CheckWin32("the registry cannot be written", status);
  }

 private:
  HKEY key_ = nullptr;
};

std::wstring ClassPath() { return L"CLSID\\" + GuidText(CLSID_Weather); }

/// One of the two places: its hive, and the calls for the type library that go with it.
struct Scope {
  HKEY hive;
  const char* who;
  HRESULT (*register_types)(ITypeLib*, std::wstring path);
  HRESULT (*unregister_types)();
};

/// Not declared by the compiler's headers; oleaut32 has had them since Windows Vista.
extern "C" HRESULT WINAPI RegisterTypeLibForUser(ITypeLib* library, OLECHAR* path, OLECHAR* help_folder);
extern "C" HRESULT WINAPI UnRegisterTypeLibForUser(REFGUID id, WORD major, WORD minor, LCID locale, SYSKIND kind);

const std::array kScopes = {
    Scope{HKEY_LOCAL_MACHINE, "all users",
          [](ITypeLib* library, std::wstring path) { return RegisterTypeLib(library, path.data(), nullptr); },
          [] { return UnRegisterTypeLib(LIBID_Orvalis, 1, 0, LOCALE_NEUTRAL, SYS_WIN64); }},
    Scope{HKEY_CURRENT_USER, "this user",
          [](ITypeLib* library, std::wstring path) { return RegisterTypeLibForUser(library, path.data(), nullptr); },
          [] { return UnRegisterTypeLibForUser(LIBID_Orvalis, 1, 0, LOCALE_NEUTRAL, SYS_WIN64); }},
};

void Unregister(const Scope& scope) {
  const ClassesRoot classes(scope.hive);
  classes.Remove(ClassPath());
  classes.Remove(std::wstring(kProgId));
  scope.unregister_types();  // one that is not there is none too many
}

void Register(const Scope& scope) {
  const ClassesRoot classes(scope.hive);
  const std::wstring executable = ExecutablePath();
  const std::wstring prog_id(kProgId);
  const std::wstring class_path = ClassPath();
  const struct {
    std::wstring path;
    std::wstring name;
    std::wstring value;
  } rows[] = {
      {class_path, L"", kDescription},
      {class_path + L"\\LocalServer32", L"", L"\"" + executable + L"\""},
      {class_path + L"\\LocalServer32", L"ServerExecutable", executable},
      {class_path + L"\\ProgID", L"", prog_id},
      {class_path + L"\\VersionIndependentProgID", L"", prog_id},
      {class_path + L"\\TypeLib", L"", GuidText(LIBID_Orvalis)},
      {class_path + L"\\Version", L"", L"1.0"},
      {class_path + L"\\Programmable", L"", L""},
      {prog_id, L"", kDescription},
      {prog_id + L"\\CLSID", L"", GuidText(CLSID_Weather)},
  };
  try {
    for (const auto& row : rows) classes.Set(row.path, row.name, row.value);
    TypeLibrary types;
    LoadLibraryInto(types);
    CheckCom("the type library cannot be registered", scope.register_types(types.library, executable));
  } catch (const RunTimeError&) {
    Unregister(scope);
    throw;
  }
}

/// Removes what this user alone had registered and nothing of what all users have: the system's call for one user's
/// type library is not known to leave theirs alone everywhere.
void RemoveOwnKeys() {
  const ClassesRoot classes(HKEY_CURRENT_USER);
  classes.Remove(ClassPath());
  classes.Remove(std::wstring(kProgId));
  classes.Remove(L"TypeLib\\" + GuidText(LIBID_Orvalis));
  classes.Remove(L"Interface\\" + GuidText(IID_IWeather));
}

/// A registration for all users must not be hidden by what this one had before.
void RegisterInFront(const Scope& scope) {
  Register(scope);
  if (scope.hive != HKEY_LOCAL_MACHINE) return;
  try {
    RemoveOwnKeys();
  } catch (const RunTimeError&) {
    // The registration for all users is valid, and this user may never have had one.
  }
}

bool IsSwitch(std::string_view argument, std::string_view name) {
  if (argument.size() != name.size() + 1 || (argument[0] != '/' && argument[0] != '-')) return false;
  return CompareStringOrdinal(Wide(argument.substr(1)).c_str(), -1, Wide(name).c_str(), -1, TRUE) == CSTR_EQUAL;
}

/// `work` for all users, or for this one where more is not allowed.
int RunFor(void (*work)(const Scope&), const char* what) {
  std::string failures;
  for (const Scope& scope : kScopes) {
    try {
      work(scope);
      return 0;
    } catch (const RunTimeError& error) {
      failures += std::string(" For ") + scope.who + ": " + error.what() + ".";
    }
  }
  std::cerr << "orvalis: the server cannot be " << what << "." << failures << '\n';
  return 1;
}

}  // namespace

ITypeInfo* LoadWeatherType() {
  TypeLibrary types;
  LoadLibraryInto(types);
  ITypeInfo* type = nullptr;
  CheckCom("the type library is not complete", types.library->GetTypeInfoOfGuid(IID_IWeather, &type));
  return type;
}

std::optional<int> RunRegistration(const std::vector<std::string>& arguments) {
  if (arguments.size() != 2) return std::nullopt;
  if (IsSwitch(arguments[1], "RegServer")) return RunFor(RegisterInFront, "registered");
  if (IsSwitch(arguments[1], "UnregServer")) {
    // In both places: an earlier version may have been registered with other rights.
    int code = 1;
    for (const Scope& scope : kScopes) {
      try {
        Unregister(scope);
        code = 0;
      } catch (const RunTimeError& error) {
        std::cerr << "orvalis: not unregistered for " << scope.who << ": " << error.what() << '\n';
      }
    }
    return code;
  }
  return std::nullopt;
}

}  // namespace orvalis
