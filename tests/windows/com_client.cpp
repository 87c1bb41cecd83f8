// A client of the automation object in C++.
//
//   com_client early          reads members through the vtable: one line each
//   com_client hold           creates an object, prints "held", and keeps it until a line comes on standard input

#include <windows.h>

// Behind the types of windows.h.
#include <initguid.h>

#include <string>

#include "tests/support/com_tools.h"
#include "weather_idl.h"

namespace {

int Early(IWeather* weather) {
  const auto print = [](const char* name, HRESULT result, const auto& value) {
    std::cout << name << ' ' << std::hex << result << ' ' << std::dec << value << '\n';
  };
  VARIANT_BOOL safe = 0;
  float temperature = 0;
  BSTR name = nullptr;
  LONG limit = 0;
  double warn = 0;
  print("Safe", weather->get_Safe(&safe), safe);
  print("AmbientTemperature", weather->get_AmbientTemperature(&temperature), temperature);
  const HRESULT named = weather->get_Name(&name);
  print("Name", named, std::string(name, name + SysStringLen(name)));
  print("WindSpeedCloseD", weather->get_WindSpeedCloseD(&limit), limit);
  print("WindSpeedWarn", weather->get_WindSpeedWarn(&warn), warn);
  SysFreeString(name);
  ISupportErrorInfo* support = nullptr;
  weather->QueryInterface(IID_ISupportErrorInfo, reinterpret_cast<void**>(&support));
  const bool says_why = support != nullptr && support->InterfaceSupportsErrorInfo(IID_IWeather) == S_OK;
  std::cout << "ISupportErrorInfo " << says_why << '\n';
  if (support != nullptr) support->Release();
  print("DewPoint", weather->get_DewPoint(&temperature), "");
  print("Halt", weather->Halt(), "");
  return 0;
}

int Hold() {
  std::cout << "held" << std::endl;
  std::string line;
  std::getline(std::cin, line);
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2 || FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return 1;
  auto* weather = orvalis::test::CreateElsewhere<IWeather>(CLSID_Weather);
  const int code = argv[1] == std::string("early") ? Early(weather) : Hold();
  weather->Release();
  CoUninitialize();
  return code;
}
