// The driver platform's three objects as a library that programs load by their ProgIDs: they do what such objects do
// and write down each call, with its arguments, in the file that ORVALIS_CALLS names. The profile keeps its values in
// the registry, the serial object uses a real port and holds its caller up while it waits, as such objects do.

#include <oaidl.h>
#include <oleauto.h>
#include <windows.h>

#include <array>
#include <atomic>
#include <cstdio>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/windows/handle.h"
#include "platform/windows/registry_profile.h"
#include "platform/windows/windows_error.h"

namespace orvalis {
namespace {

std::atomic<long> g_objects = 0;
HMODULE g_library = nullptr;

void WriteDown(const std::string& call) {
  const wchar_t* path = _wgetenv(L"ORVALIS_CALLS");
  if (path == nullptr) return;
  const Handle file(
      CreateFileW(path, FILE_APPEND_DATA, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS, 0, nullptr));
  const std::string line = call + "\n";
  DWORD written = 0;
  WriteFile(file.get(), line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}

struct Failure {
  std::string description;
};

std::string TextOf(const VARIANT& value) {
  VARIANT text;
  VariantInit(&text);
  if (FAILED(VariantChangeType(&text, const_cast<VARIANT*>(&value), 0, VT_BSTR))) throw Failure{"not a text"};
  std::string narrow = Narrow({text.bstrVal, SysStringLen(text.bstrVal)});
  VariantClear(&text);
  return narrow;
}

VARIANT ToVariant(const std::string& text) {
  const std::wstring wide = Wide(text);
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_BSTR;
  value.bstrVal = SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
  return value;
}

VARIANT ToVariant(bool flag) {
  VARIANT value;
  VariantInit(&value);
  value.vt = VT_BOOL;
  value.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
  return value;
}

using Arguments = std::vector<std::string>;

/// One member of an object: what may be done with it, with how many arguments.
struct Member {
  std::string name;
  WORD kind;
  std::size_t arguments;
  std::function<VARIANT(const Arguments&)> work;
};

/// An object whose members are known by their names only.
class Object : public IDispatch {
 public:
  explicit Object(std::string name) : name_(std::move(name)) {
    ++g_objects;
    WriteDown(name_ + " made");
  }
  virtual ~Object() {
    --g_objects;
    WriteDown(name_ + " released");
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = nullptr;
    if (id != IID_IUnknown && id != IID_IDispatch) return E_NOINTERFACE;
    AddRef();
    *object = static_cast<IDispatch*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
    *count = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    for (std::size_t i = 0; i < members_.size(); ++i) {
      if (Narrow(names[0]) != members_[i].name) continue;
      ids[0] = IdOf(members_[i].name);
      return S_OK;
    }
    return DISP_E_UNKNOWNNAME;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* given, VARIANT* result,
                                   EXCEPINFO* error, UINT*) override {
    for (const Member& member : members_) {
      if (IdOf(member.name) != id || (member.kind & kind) == 0) continue;
      if (given->cArgs != member.arguments) return DISP_E_BADPARAMCOUNT;
      try {
        Arguments arguments;
        std::string shown;
        for (UINT i = given->cArgs; i > 0; --i) {
          arguments.push_back(TextOf(given->rgvarg[i - 1]));
          const bool is_text = given->rgvarg[i - 1].vt == VT_BSTR;
          shown += (shown.empty() ? "" : ", ") + (is_text ? "\"" + arguments.back() + "\"" : arguments.back());
        }
        const bool put = kind == DISPATCH_PROPERTYPUT;
        WriteDown(name_ + "." + member.name +
                  (put                             ? " = " + shown
                   : (kind & DISPATCH_METHOD) != 0 ? "(" + shown + ")"
                                                   : ""));
        VARIANT answer = member.work(arguments);
        if (result != nullptr) {
          *result = answer;
        } else {
          VariantClear(&answer);
        }
        return S_OK;
      } catch (const Failure& failure) {
        *error = {};
        error->scode = static_cast<SCODE>(0x80040400);
        error->bstrDescription = SysAllocString(Wide(failure.description).c_str());
        return DISP_E_EXCEPTION;
      }
    }
    return DISP_E_MEMBERNOTFOUND;
  }

 protected:
  void Method(const std::string& name, std::size_t arguments, std::function<VARIANT(const Arguments&)> work) {
    members_.push_back({name, DISPATCH_METHOD, arguments, std::move(work)});
  }
  void Put(const std::string& name, std::function<void(const std::string&)> work) {
    members_.push_back({name, DISPATCH_PROPERTYPUT, 1, [work](const Arguments& arguments) {
                          work(arguments[0]);
                          return VARIANT{};
                        }});
  }
  void Get(const std::string& name, std::function<VARIANT()> work) {
    members_.push_back({name, DISPATCH_PROPERTYGET, 0, [work](const Arguments&) { return work(); }});
  }

 private:
  /// The same for all kinds of one name.
  [[nodiscard]] DISPID IdOf(const std::string& name) const {
    for (std::size_t i = 0; i < members_.size(); ++i) {
      if (members_[i].name == name) return static_cast<DISPID>(i + 1);
    }
    return DISPID_UNKNOWN;
  }

  std::string name_;
  std::vector<Member> members_;
  std::atomic<ULONG> references_ = 1;
};

class ProfileObject : public Object {
 public:
  ProfileObject() : Object("Profile") {
    Put("DeviceType", [](const std::string&) {});
    Method("Register", 2, [](const Arguments&) { return VARIANT{}; });
    Method("GetValue", 3, [this](const Arguments& a) { return ToVariant(store_.GetValue(a[0], a[1], a[2])); });
    Method("WriteValue", 4, [this](const Arguments& a) {
      if (a[2] == "refused") throw Failure{"the value is refused"};
      store_.WriteValue(a[0], a[1], a[2], a[3]);
      return VARIANT{};
    });
  }

 private:
  RegistryProfile store_{L"Software\\OrvalisTests\\Profile"};
};

class UtilityObject : public Object {
 public:
  UtilityObject() : Object("util") {}
};

class SerialObject : public Object {
 public:
  SerialObject() : Object("Serial") {
    Put("Port", [this](const std::string& text) { port_ = text; });
    Put("Speed", [](const std::string&) {});
    Put("ReceiveTimeout", [this](const std::string& text) { seconds_ = std::stoi(text); });
    Put("Connected", [this](const std::string& text) { text == "0" || text == "False" ? Close() : Open(); });
    Get("Connected", [this] { return ToVariant(static_cast<bool>(line_)); });
    Method("ClearBuffers", 0, [this](const Arguments&) {
      PurgeComm(line_.get(), PURGE_RXCLEAR | PURGE_TXCLEAR);
      return VARIANT{};
    });
    Method("Transmit", 1, [this](const Arguments& a) {
      DWORD written = 0;
      if (WriteFile(line_.get(), a[0].data(), static_cast<DWORD>(a[0].size()), &written, nullptr) == 0) Gone();
      return VARIANT{};
    });
    Method("ReceiveCounted", 1, [this](const Arguments& a) {
      const auto count = static_cast<std::size_t>(std::stoi(a[0]));
      return Receive([count](const std::string& text) { return text.size() >= count; });
    });
    Method("ReceiveTerminated", 1, [this](const Arguments& a) {
      return Receive([end = a[0]](const std::string& text) { return text.ends_with(end); });
    });
  }

 private:
  void Open() {
    const std::wstring path = Wide(R"(\\.\COM)" + port_);
    line_ = Handle(CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    if (!line_) throw Failure{"COM" + port_ + " is not there"};
    COMMTIMEOUTS time_outs{};
    time_outs.ReadIntervalTimeout = MAXDWORD;
    SetCommTimeouts(line_.get(), &time_outs);
  }
  void Close() { line_ = {}; }
  [[noreturn]] void Gone() {
    Close();
    throw Failure{"the line is gone"};
  }
  VARIANT Receive(const std::function<bool(const std::string&)>& complete) {
    std::string text;
    const ULONGLONG end = GetTickCount64() + static_cast<ULONGLONG>(seconds_) * 1000;
    while (!complete(text)) {
      if (GetTickCount64() >= end) throw Failure{"timed out"};
      char byte = 0;
      DWORD count = 0;
      if (ReadFile(line_.get(), &byte, 1, &count, nullptr) == 0) Gone();
      if (count == 1) {
        text += byte;
      } else {
        Sleep(1);
      }
    }
    return ToVariant(text);
  }

  std::string port_;
  int seconds_ = 0;
  Handle line_;
};

struct Registered {
  const wchar_t* prog_id;
  const wchar_t* class_id;
  Object* (*make)();
};
constexpr std::array<Registered, 3> kObjects{{
    {L"DriverHelper.Profile", L"{6B0E1D5C-3D0E-4A53-9C57-6F6D2E1F0A01}",
     [] { return static_cast<Object*>(new ProfileObject); }},
    {L"DriverHelper.util", L"{6B0E1D5C-3D0E-4A53-9C57-6F6D2E1F0A02}",
     [] { return static_cast<Object*>(new UtilityObject); }},
    {L"DriverHelper.Serial", L"{6B0E1D5C-3D0E-4A53-9C57-6F6D2E1F0A03}",
     [] { return static_cast<Object*>(new SerialObject); }},
}};

class Factory : public IClassFactory {
 public:
  explicit Factory(const Registered& about) : about_(about) {}
  virtual ~Factory() = default;
  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
    *object = nullptr;
    if (id != IID_IUnknown && id != IID_IClassFactory) return E_NOINTERFACE;
    AddRef();
    *object = static_cast<IClassFactory*>(this);
    return S_OK;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
  }
  HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID id, void** object) override {
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    Object* made = about_.make();
    const HRESULT result = made->QueryInterface(id, object);
    made->Release();
    return result;
  }
  HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

 private:
  const Registered& about_;
  std::atomic<ULONG> references_ = 1;
};

bool SetDefaultValue(const std::wstring& key, const std::wstring& text) {
  return RegSetKeyValueW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + key).c_str(), nullptr, REG_SZ, text.c_str(),
                         static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t))) == ERROR_SUCCESS;
}

}  // namespace
}  // namespace orvalis

using orvalis::kObjects;
using orvalis::Registered;

extern "C" {

BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, LPVOID /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) orvalis::g_library = library;
  return TRUE;
}

HRESULT WINAPI DllGetClassObject(REFCLSID class_id, REFIID id, void** object) {
  for (const Registered& row : kObjects) {
    CLSID own{};
    CLSIDFromString(row.class_id, &own);
    if (own != class_id) continue;
    auto* factory = new orvalis::Factory(row);
    const HRESULT result = factory->QueryInterface(id, object);
    factory->Release();
    return result;
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT WINAPI DllCanUnloadNow() { return orvalis::g_objects == 0 ? S_OK : S_FALSE; }

HRESULT WINAPI DllRegisterServer() {
  std::array<wchar_t, MAX_PATH> path{};
  GetModuleFileNameW(orvalis::g_library, path.data(), path.size());
  bool done = true;
  for (const Registered& row : kObjects) {
    const std::wstring home = std::wstring(L"CLSID\\") + row.class_id + L"\\InprocServer32";
    done = orvalis::SetDefaultValue(std::wstring(row.prog_id) + L"\\CLSID", row.class_id) &&
           orvalis::SetDefaultValue(home, path.data()) && done;
    RegSetKeyValueW(HKEY_LOCAL_MACHINE, (L"Software\\Classes\\" + home).c_str(), L"ThreadingModel", REG_SZ,
                    L"Apartment", sizeof(L"Apartment"));
  }
  return done ? S_OK : E_FAIL;
}

HRESULT WINAPI DllUnregisterServer() {
  for (const Registered& row : kObjects) {
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (std::wstring(L"Software\\Classes\\") + row.prog_id).c_str());
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, (std::wstring(L"Software\\Classes\\CLSID\\") + row.class_id).c_str());
  }
  return S_OK;
}

}  // extern "C"
