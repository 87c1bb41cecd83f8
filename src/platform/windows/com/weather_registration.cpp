#include "platform/windows/com/weather_registration.h"

#include <initguid.h>

#include <array>
#include <iostream>
#include <string_view>
#include <vector>

#include "platform/windows/windows_error.h"
#include "weather_idl.h"

namespace orvalis {
namespace {

struct RegisteredClass {
  const CLSID& class_id;
  const IID& interface_id;
  const wchar_t* prog_id;
  const wchar_t* interface_name;
  const wchar_t* description;
};
const std::array kRegistered = {
    RegisteredClass{CLSID_Weather, IID_IWeather, L"Orvalis.Weather", L"IWeather", L"Orvalis weather server"},
    RegisteredClass{CLSID_Observation, IID_IObservation, L"Orvalis.Observation", L"IObservation",
                    L"Orvalis observation server"},
};

struct TypeLibrary {
  ITypeLib* library = nullptr;
  TypeLibrary() = default;
  TypeLibrary(const TypeLibrary&) = delete;
  TypeLibrary& operator=(const TypeLibrary&) = delete;
  ~TypeLibrary() {
    if (library != nullptr) library->Release();
  }
};

constexpr std::size_t kLongestPath = 32768;

std::wstring ExecutablePath() {
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

/// Where classes are registered, for all users or for this one. 32-bit programs see a separate view.
class ClassesRoot {
 public:
  enum class View : REGSAM { k64Bits = KEY_WOW64_64KEY, k32Bits = KEY_WOW64_32KEY };
  explicit ClassesRoot(HKEY hive, View view = View::k64Bits) : hive_(hive), view_(static_cast<REGSAM>(view)) {}

  void Set(const std::wstring& path, const std::wstring& name, const std::wstring& value) const {
    const Key key(hive_, kClasses + path, KEY_WRITE | view_);
    const auto bytes = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    CheckWritten(RegSetValueExW(key.get(), name.empty() ? nullptr : name.c_str(), 0, REG_SZ,
                                reinterpret_cast<const BYTE*>(value.c_str()), bytes));
  }
  /// Empty if there is none.
  [[nodiscard]] std::wstring Get(const std::wstring& path, const std::wstring& name) const {
    std::wstring value(kLongestPath, L'\0');
    auto bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
    const DWORD view = view_ == KEY_WOW64_32KEY ? RRF_SUBKEY_WOW6432KEY : RRF_SUBKEY_WOW6464KEY;
    const LSTATUS status = RegGetValueW(hive_, (kClasses + path).c_str(), name.c_str(), RRF_RT_REG_SZ | view, nullptr,
                                        value.data(), &bytes);
    value.resize(status == ERROR_SUCCESS ? bytes / sizeof(wchar_t) - 1 : 0);
    return value;
  }
  void Remove(const std::wstring& path) const {
    // Deleted through its parent, because only opening a key selects the view.
    const std::size_t last = path.rfind(L'\\');
    const bool nested = last != std::wstring::npos;
    const Key parent(hive_, kClasses + (nested ? path.substr(0, last) : L""), KEY_ALL_ACCESS | view_);
    const LSTATUS status = RegDeleteTreeW(parent.get(), path.substr(nested ? last + 1 : 0).c_str());
    if (status != ERROR_FILE_NOT_FOUND) CheckWritten(status);
  }

 private:
  class Key {
   public:
    Key(HKEY hive, const std::wstring& path, REGSAM access) {
      CheckWritten(RegCreateKeyExW(hive, path.c_str(), 0, nullptr, 0, access, nullptr, &key_, nullptr));
    }
    Key(const Key&) = delete;
    Key& operator=(const Key&) = delete;
    ~Key() { RegCloseKey(key_); }
    [[nodiscard]] HKEY get() const { return key_; }

   private:
    HKEY key_ = nullptr;
  };

  static void CheckWritten(LSTATUS status) {
    if (status != ERROR_SUCCESS) throw Win32Error("the registry cannot be written", static_cast<DWORD>(status));
  }

  static inline const std::wstring kClasses = L"Software\\Classes\\";

  HKEY hive_;
  REGSAM view_;
};

std::wstring ClassPath(const RegisteredClass& of) { return L"CLSID\\" + GuidText(of.class_id); }
std::wstring InterfacePath(const RegisteredClass& of) { return L"Interface\\" + GuidText(of.interface_id); }
std::wstring TypesPath() { return L"TypeLib\\" + GuidText(LIBID_Orvalis); }

/// One of the two scopes: its hive, and the type library calls for it.
struct Scope {
  HKEY hive;
  const char* who;
  HRESULT (*register_types)(ITypeLib*, std::wstring path);
  HRESULT (*unregister_types)();
};

/// In oleaut32 since Windows Vista, but missing from the compiler's headers.
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

struct Row {
  std::wstring path;
  std::wstring name;
  std::wstring value;
};

/// What both kinds of programs look for.
std::vector<Row> ClassRows(const RegisteredClass& of, const std::wstring& executable) {
  const std::wstring prog_id(of.prog_id);
  const std::wstring class_path = ClassPath(of);
  return {
      {class_path, L"", of.description},
      {class_path + L"\\LocalServer32", L"", L"\"" + executable + L"\""},
      {class_path + L"\\LocalServer32", L"ServerExecutable", executable},
      {class_path + L"\\ProgID", L"", prog_id},
      {class_path + L"\\VersionIndependentProgID", L"", prog_id},
      {class_path + L"\\TypeLib", L"", GuidText(LIBID_Orvalis)},
      {class_path + L"\\Version", L"", L"1.0"},
      {class_path + L"\\Programmable", L"", L""},
      {prog_id, L"", of.description},
      {prog_id + L"\\CLSID", L"", GuidText(of.class_id)},
  };
}

/// What the system's registration of the type library writes for programs of the server's own kind alone.
std::vector<Row> InterfaceRows32(const RegisteredClass& of) {
  // The class of the system that carries calls from process to process as the type library describes them.
  constexpr const wchar_t* kMarshaler = L"{00020424-0000-0000-C000-000000000046}";
  const std::wstring path = InterfacePath(of);
  return {
      {path, L"", of.interface_name},
      {path + L"\\ProxyStubClsid32", L"", kMarshaler},
      {path + L"\\TypeLib", L"", GuidText(LIBID_Orvalis)},
      {path + L"\\TypeLib", L"Version", L"1.0"},
  };
}

/// Removes everything registered, except what the system's calls remove.
void RemoveKeys(const Scope& scope) {
  const ClassesRoot classes(scope.hive);
  const ClassesRoot classes_32(scope.hive, ClassesRoot::View::k32Bits);
  for (const ClassesRoot* const root : {&classes, &classes_32}) {
    for (const RegisteredClass& each : kRegistered) {
      root->Remove(ClassPath(each));
      root->Remove(InterfacePath(each));
      root->Remove(each.prog_id);
    }
  }
  classes.Remove(TypesPath());
}

std::wstring EventSourcePath() {
  return std::wstring(L"SYSTEM\\CurrentControlSet\\Services\\EventLog\\Application\\") + kEventSource;
}

void Unregister(const Scope& scope) {
  if (scope.hive == HKEY_LOCAL_MACHINE) RegDeleteTreeW(scope.hive, EventSourcePath().c_str());
  scope.unregister_types();  // fails if there is none, which is fine
  RemoveKeys(scope);
}

/// A plain text event needs a message file; one that comes with Windows will do. Without it the event viewer adds that
/// the description is missing.
void RegisterEventSource() {
  const std::wstring path = EventSourcePath();
  constexpr std::wstring_view kMessages = L"%SystemRoot%\\System32\\EventCreate.exe";
  constexpr DWORD kTypes = EVENTLOG_ERROR_TYPE | EVENTLOG_WARNING_TYPE | EVENTLOG_INFORMATION_TYPE;
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, path.c_str(), L"EventMessageFile", REG_EXPAND_SZ, kMessages.data(),
                  static_cast<DWORD>((kMessages.size() + 1) * sizeof(wchar_t)));
  RegSetKeyValueW(HKEY_LOCAL_MACHINE, path.c_str(), L"TypesSupported", REG_DWORD, &kTypes, sizeof(kTypes));
}

void Register(const Scope& scope) {
  const ClassesRoot classes(scope.hive);
  const ClassesRoot classes_32(scope.hive, ClassesRoot::View::k32Bits);
  const std::wstring executable = ExecutablePath();
  try {
    for (const RegisteredClass& each : kRegistered) {
      for (const Row& row : ClassRows(each, executable)) {
        classes.Set(row.path, row.name, row.value);
        classes_32.Set(row.path, row.name, row.value);
      }
    }
    TypeLibrary types;
    LoadLibraryInto(types);
    CheckCom("the type library cannot be registered", scope.register_types(types.library, executable));
    for (const RegisteredClass& each : kRegistered) {
      for (const Row& row : InterfaceRows32(each)) classes_32.Set(row.path, row.name, row.value);
    }
    // The second type library in the executable, see orvalis.rc.in.
    classes.Set(TypesPath() + L"\\1.0\\0\\win32", L"", executable + L"\\2");
  } catch (const RunTimeError&) {
    Unregister(scope);
    throw;
  }
}

/// An earlier registration for this user must not hide the one for all users.
void RegisterUnhidden(const Scope& scope) {
  Register(scope);
  if (scope.hive != HKEY_LOCAL_MACHINE) return;
  RegisterEventSource();
  try {
    // Not by UnRegisterTypeLibForUser, which may not leave the library of all users alone on every system.
    RemoveKeys(kScopes[1]);
  } catch (const RunTimeError&) {
    // The registration for all users is valid, and this user may never have had one.
  }
}

/// Whether the registration leads to the same program in another folder, and is not for this one to remove.
bool BelongsToAnother(const Scope& scope) {
  const std::wstring registered =
      ClassesRoot(scope.hive).Get(ClassPath(kRegistered[0]) + L"\\LocalServer32", L"ServerExecutable");
  if (registered.empty()) return false;
  return CompareStringOrdinal(registered.c_str(), -1, ExecutablePath().c_str(), -1, TRUE) != CSTR_EQUAL &&
         GetFileAttributesW(registered.c_str()) != INVALID_FILE_ATTRIBUTES;
}

bool IsSwitch(std::string_view argument, std::string_view name) {
  if (argument.size() != name.size() + 1 || (argument[0] != '/' && argument[0] != '-')) return false;
  return CompareStringOrdinal(Wide(argument.substr(1)).c_str(), -1, Wide(name).c_str(), -1, TRUE) == CSTR_EQUAL;
}

/// Does `work` for all users, or for this one if that is not allowed.
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

ITypeInfo* LoadType(const IID& interface_id) {
  TypeLibrary types;
  LoadLibraryInto(types);
  ITypeInfo* type = nullptr;
  CheckCom("the type library is not complete", types.library->GetTypeInfoOfGuid(interface_id, &type));
  return type;
}

std::optional<int> RunRegistration(const std::vector<std::string>& arguments) {
  if (arguments.size() != 2) return std::nullopt;
  if (IsSwitch(arguments[1], "RegServer")) return RunFor(RegisterUnhidden, "registered");
  if (IsSwitch(arguments[1], "UnregServer")) {
    // In both places: an earlier version may have been registered with other rights.
    int code = 1;
    for (const Scope& scope : kScopes) {
      if (BelongsToAnother(scope)) {
        std::cerr << "orvalis: kept for " << scope.who << ": a program in another folder is registered\n";
        code = 0;
        continue;
      }
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
