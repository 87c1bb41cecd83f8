// The driver platform's three objects as a library that programs load by their ProgIDs: they do what such objects do
// and write down each call, with its arguments, in the file that ORVALIS_CALLS names. The profile keeps its values in
// the registry, the serial object uses a real port and holds its caller up while it waits, as such objects do.

#include <windows.h>

// Behind the types of windows.h.
#include <initguid.h>
#include <oleauto.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/windows/handle.h"
#include "platform/windows/registry_profile.h"
#include "platform/windows/windows_error.h"
#include "tests/support/com_tools.h"

namespace orvalis {
namespace {

void WriteDown(const std::string& call) {
  const wchar_t* path = _wgetenv(L"ORVALIS_CALLS");
  if (path != nullptr) std::ofstream(std::filesystem::path(path), std::ios::app | std::ios::binary) << call + "\n";
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
class Object : public test::NamedCalls {
 public:
  explicit Object(std::string name) : name_(std::move(name)) { WriteDown(name_ + " made"); }
  ~Object() override { WriteDown(name_ + " released"); }

  HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override {
    ids[0] = IdOf(Narrow(names[0]));
    return ids[0] == DISPID_UNKNOWN ? DISP_E_UNKNOWNNAME : S_OK;
  }
  HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD kind, DISPPARAMS* given, VARIANT* result,
                                   EXCEPINFO* error, UINT*) override {
    const auto member =
        std::ranges::find_if(members_, [&](const Member& m) { return IdOf(m.name) == id && (m.kind & kind) != 0; });
    if (member == members_.end()) return DISP_E_MEMBERNOTFOUND;
    if (given->cArgs != member->arguments) return DISP_E_BADPARAMCOUNT;
    try {
      VARIANT answer = Call(*member, *given);
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
    const auto first = std::ranges::find(members_, name, &Member::name);
    return first == members_.end() ? DISPID_UNKNOWN : static_cast<DISPID>(first - members_.begin() + 1);
  }
  /// Writes the call down and does it.
  [[nodiscard]] VARIANT Call(const Member& member, const DISPPARAMS& given) const {
    Arguments arguments;
    std::string shown;
    for (UINT i = given.cArgs; i > 0; --i) {
      arguments.push_back(TextOf(given.rgvarg[i - 1]));
      const std::string quote = given.rgvarg[i - 1].vt == VT_BSTR ? "\"" : "";
      shown += (shown.empty() ? "" : ", ") + quote + arguments.back() + quote;
    }
    if (member.kind == DISPATCH_PROPERTYPUT) shown = " = " + shown;
    if (member.kind == DISPATCH_METHOD) shown = "(" + shown + ")";
    WriteDown(name_ + "." + member.name + shown);
    return member.work(arguments);
  }

  std::string name_;
  std::vector<Member> members_;
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

class SerialObject : public Object {
 public:
  SerialObject() : Object("Serial") {
    Put("Port", [this](const std::string& text) { port_ = text; });
    Put("Speed", [](const std::string&) {});
    Put("ReceiveTimeout", [this](const std::string& text) { seconds_ = std::stoi(text); });
    Put("Connected", [this](const std::string& text) { text == "0" || text == "False" ? void(line_ = {}) : Open(); });
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
  [[noreturn]] void Gone() {
    line_ = {};
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

/// By the last digit of their class.
constexpr std::array<IDispatch* (*)(), 3> kMakers{[]() -> IDispatch* { return new ProfileObject; },
                                                  []() -> IDispatch* { return new Object("util"); },
                                                  []() -> IDispatch* { return new SerialObject; }};

}  // namespace
}  // namespace orvalis

// {6B0E1D5C-3D0E-4A53-9C57-6F6D2E1F0A01} and the two that follow it, which the test registers.
extern "C" HRESULT WINAPI DllGetClassObject(REFCLSID class_id, REFIID id, void** object) {
  const std::size_t digit = class_id.Data4[7];
  if (digit < 1 || digit > orvalis::kMakers.size()) return CLASS_E_CLASSNOTAVAILABLE;
  auto* factory = new orvalis::test::ComFactory(orvalis::kMakers[digit - 1]);
  const HRESULT result = factory->QueryInterface(id, object);
  factory->Release();
  return result;
}
