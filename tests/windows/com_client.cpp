// A client of the automation object in C++.
//
//   com_client early          reads members through the vtable: one line each
//   com_client late           calls by name, with wrong counts and types too: one line each
//   com_client hold           creates an object, prints "held", and keeps it until an empty line comes on standard
//   input;
//                             the lines "on" and "off" set its Connected, and what came of that is printed

#include <windows.h>

// Behind the types of windows.h.
#include <initguid.h>
#include <oleauto.h>

#include <array>
#include <cstdio>
#include <iostream>
#include <string>
#include <vector>

#include "weather_idl.h"

namespace {

constexpr IID kReserved{};

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

}  // namespace

int main(int argc, char** argv) {
  if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  const std::string command = argc > 1 ? argv[1] : "";
  int code = 2;
  if (command == "early") code = Early();
  if (command == "late") code = Late();
  if (command == "hold") code = Hold();
  CoUninitialize();
  return code;
}
