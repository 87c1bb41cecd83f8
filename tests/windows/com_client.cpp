// A client of the automation object in C++.
//
//   com_client early          reads members through the vtable: one line each
//   com_client late           calls by name, with wrong counts and types too: one line each
//   com_client hold           creates an object, prints "held", and keeps it until an empty line comes on standard
//   input;
//                             the lines "on" and "off" set its Connected, and what came of that is printed
//   com_client measure N      "ORVALIS EMPTY": medians in microseconds of N reads each, side by side, of the program's
//                             property and of an automation server that does nothing else
//   com_client serve          is that server, until it is ended

#include <windows.h>

// Behind the types of windows.h.
#include <initguid.h>
#include <oleauto.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <functional>
#include <iostream>
#include <string>
#include <vector>

#include "weather_idl.h"

namespace {

// The second is {b3f3c6de-5a3c-4f0e-9d4e-2f6a7d1c8e90}.
constexpr IID kReserved{};
constexpr CLSID kEmptyClass = {0xb3f3c6de, 0x5a3c, 0x4f0e, {0x9d, 0x4e, 0x2f, 0x6a, 0x7d, 0x1c, 0x8e, 0x90}};

std::string Narrow(const wchar_t* text) {
  std::string narrow;
  for (; text != nullptr && *text != 0; ++text) narrow += static_cast<char>(*text);
  return narrow;
}

/// "0", or the number with the source and the description that stand for this thread.
std::string ResultText(HRESULT result) {
  std::array<char, 16> number{};
  std::snprintf(number.data(), number.size(), "%lx", static_cast<unsigned long>(result));
  IErrorInfo* info = nullptr;
  if (SUCCEEDED(result) || GetErrorInfo(0, &info) != S_OK) return number.data();
  BSTR source = nullptr;
  BSTR description = nullptr;
  info->GetSource(&source);
  info->GetDescription(&description);
  const std::string text = std::string(number.data()) + " [" + Narrow(source) + "] " + Narrow(description);
  SysFreeString(source);
  SysFreeString(description);
  info->Release();
  return text;
}

template <typename Interface>
Interface* Create(REFCLSID class_id, REFIID interface_id) {
  void* object = nullptr;
  const HRESULT result = CoCreateInstance(class_id, nullptr, CLSCTX_LOCAL_SERVER, interface_id, &object);
  if (FAILED(result)) {
    std::cout << "no object: " << ResultText(result) << std::endl;
    std::exit(1);
  }
  return static_cast<Interface*>(object);
}

int Early() {
  auto* weather = Create<IWeather>(CLSID_Weather, IID_IWeather);
  VARIANT_BOOL safe = 0;
  float temperature = 0;
  BSTR name = nullptr;
  LONG limit = 0;
  double warn = 0;
  std::cout << "Safe " << ResultText(weather->get_Safe(&safe)) << ' ' << safe << '\n';
  std::cout << "AmbientTemperature " << ResultText(weather->get_AmbientTemperature(&temperature)) << ' ' << temperature
            << '\n';
  std::cout << "Name " << ResultText(weather->get_Name(&name)) << ' ' << Narrow(name) << '\n';
  std::cout << "WindSpeedCloseD " << ResultText(weather->get_WindSpeedCloseD(&limit)) << ' ' << limit << '\n';
  std::cout << "WindSpeedWarn " << ResultText(weather->get_WindSpeedWarn(&warn)) << ' ' << warn << '\n';
  SysFreeString(name);
  ISupportErrorInfo* support = nullptr;
  weather->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(&support));
  std::cout << "ISupportErrorInfo " << (support != nullptr && support->InterfaceSupportsErrorInfo(IID_IWeather) == S_OK)
            << '\n';
  if (support != nullptr) support->Release();
  SetErrorInfo(0, nullptr);
  std::cout << "DewPoint " << ResultText(weather->get_DewPoint(&temperature)) << '\n';
  std::cout << "Halt " << ResultText(weather->Halt()) << '\n';
  weather->Release();
  return 0;
}

int Late() {
  auto* weather = Create<IDispatch>(CLSID_Weather, IID_IDispatch);
  const auto call = [&](const wchar_t* name, WORD flags, std::vector<VARIANT> arguments) {
    DISPID id = 0;
    auto* writable = const_cast<wchar_t*>(name);
    HRESULT result = weather->GetIDsOfNames(kReserved, &writable, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(result)) return ResultText(result);
    DISPID put = DISPID_PROPERTYPUT;
    const bool is_put = flags == DISPATCH_PROPERTYPUT;
    DISPPARAMS parameters{arguments.data(), is_put ? &put : nullptr, static_cast<UINT>(arguments.size()),
                          is_put ? 1U : 0U};
    VARIANT value;
    VariantInit(&value);
    EXCEPINFO exception{};
    UINT wrong = 0;
    SetErrorInfo(0, nullptr);
    result = weather->Invoke(id, kReserved, LOCALE_USER_DEFAULT, flags, &parameters, is_put ? nullptr : &value,
                             &exception, &wrong);
    std::string text = ResultText(result);
    if (result == DISP_E_EXCEPTION) {
      text = "raised " + ResultText(exception.scode) + " [" + Narrow(exception.bstrSource) + "] " +
             Narrow(exception.bstrDescription);
    }
    if (SUCCEEDED(result) && !is_put) text += " type " + std::to_string(value.vt);
    VariantClear(&value);
    return text;
  };
  VARIANT yes{};
  yes.vt = VT_BOOL;
  yes.boolVal = VARIANT_TRUE;
  VARIANT word{};
  word.vt = VT_BSTR;
  word.bstrVal = SysAllocString(L"word");
  std::cout << "Safe " << call(L"Safe", DISPATCH_PROPERTYGET, {}) << '\n';
  std::cout << "Clouds " << call(L"CLOUDS", DISPATCH_PROPERTYGET, {}) << '\n';
  std::cout << "DewPoint " << call(L"DewPoint", DISPATCH_PROPERTYGET, {}) << '\n';
  std::cout << "Pressure " << call(L"Pressure", DISPATCH_PROPERTYGET, {}) << '\n';
  std::cout << "Safe with an argument " << call(L"Safe", DISPATCH_PROPERTYGET, {yes}) << '\n';
  std::cout << "Halt with an argument " << call(L"Halt", DISPATCH_METHOD, {yes}) << '\n';
  std::cout << "put Safe " << call(L"Safe", DISPATCH_PROPERTYPUT, {yes}) << '\n';
  std::cout << "put Connected word " << call(L"Connected", DISPATCH_PROPERTYPUT, {word}) << '\n';
  SysFreeString(word.bstrVal);
  weather->Release();
  return 0;
}

int Hold() {
  auto* weather = Create<IWeather>(CLSID_Weather, IID_IWeather);
  std::cout << "held" << std::endl;
  std::string line;
  while (std::getline(std::cin, line) && !line.empty()) {
    std::cout << ResultText(weather->put_Connected(line == "on" ? VARIANT_TRUE : VARIANT_FALSE)) << std::endl;
  }
  weather->Release();
  return 0;
}

/// Answers to "Safe" and to nothing else.
class EmptyObject final : public IDispatch {
 public:
  STDMETHODIMP QueryInterface(REFIID interface_id, void** object) override {
    const bool known = interface_id == IID_IUnknown || interface_id == IID_IDispatch;
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP GetTypeInfoCount(UINT* count) override { return *count = 0, S_OK; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* ids) override { return *ids = 1, S_OK; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override {
    result->vt = VT_BOOL;
    result->boolVal = VARIANT_TRUE;
    return S_OK;
  }
};

class EmptyFactory final : public IClassFactory {
 public:
  STDMETHODIMP QueryInterface(REFIID interface_id, void** object) override {
    const bool known = interface_id == IID_IUnknown || interface_id == IID_IClassFactory;
    *object = known ? this : nullptr;
    return known ? S_OK : E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 2; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP CreateInstance(IUnknown*, REFIID interface_id, void** object) override {
    return object_.QueryInterface(interface_id, object);
  }
  STDMETHODIMP LockServer(BOOL) override { return S_OK; }

 private:
  EmptyObject object_;
};

int Serve() {
  EmptyFactory factory;
  DWORD registration = 0;
  const HRESULT result =
      CoRegisterClassObject(kEmptyClass, &factory, CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE, &registration);
  std::cout << "serving " << ResultText(result) << std::endl;
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  CoRevokeClassObject(registration);
  return 0;
}

double MedianRead(IDispatch* object, int count) {
  DISPID id = 0;
  auto* name = const_cast<wchar_t*>(L"Safe");
  object->GetIDsOfNames(kReserved, &name, 1, LOCALE_USER_DEFAULT, &id);
  std::vector<double> times;
  for (int i = 0; i < count; ++i) {
    DISPPARAMS none{};
    VARIANT value;
    VariantInit(&value);
    const auto begin = std::chrono::steady_clock::now();
    object->Invoke(id, kReserved, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET, &none, &value, nullptr, nullptr);
    times.push_back(std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - begin).count());
  }
  std::sort(times.begin(), times.end());
  return times[times.size() / 2];
}

int MeasureReads(int count) {
  auto* weather = Create<IDispatch>(CLSID_Weather, IID_IDispatch);
  auto* empty = Create<IDispatch>(kEmptyClass, IID_IDispatch);
  std::vector<double> ours;
  std::vector<double> theirs;
  constexpr int kRounds = 9;
  for (int round = 0; round < kRounds; ++round) {
    ours.push_back(MedianRead(weather, count));
    theirs.push_back(MedianRead(empty, count));
  }
  std::sort(ours.begin(), ours.end());
  std::sort(theirs.begin(), theirs.end());
  std::cout << ours[kRounds / 2] << ' ' << theirs[kRounds / 2] << std::endl;
  weather->Release();
  empty->Release();
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  const std::string command = argc > 1 ? argv[1] : "";
  int code = 2;
  if (command == "early") code = Early();
  if (command == "late") code = Late();
  if (command == "hold") code = Hold();
  if (command == "serve") code = Serve();
  if (command == "measure" && argc > 2) code = MeasureReads(std::stoi(argv[2]));
  CoUninitialize();
  return code;
}
