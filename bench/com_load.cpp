// Measures how long a read of the automation object takes, beside a server that does nothing else.
//
//   com_load measure N      "ORVALIS EMPTY": medians in microseconds of N reads each, side by side, of the program's
//                           property and of the empty server's
//   com_load serve          is that server, until it is ended

#include <windows.h>

// After windows.h, whose types they use.
#include <initguid.h>
#include <oleauto.h>

#include <algorithm>
#include <chrono>
#include <iostream>
#include <string>
#include <vector>

#include "tests/support/com_tools.h"
#include "weather_idl.h"

namespace {

constexpr IID kReserved{};
// {b3f3c6de-5a3c-4f0e-9d4e-2f6a7d1c8e90}
constexpr CLSID kEmptyClass = {0xb3f3c6de, 0x5a3c, 0x4f0e, {0x9d, 0x4e, 0x2f, 0x6a, 0x7d, 0x1c, 0x8e, 0x90}};

/// Answers to "Safe" and to nothing else.
class EmptyObject final : public orvalis::test::NamedCalls {
 public:
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID* ids) override { return *ids = 1, S_OK; }
  STDMETHODIMP Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*, UINT*) override {
    result->vt = VT_BOOL;
    result->boolVal = VARIANT_TRUE;
    return S_OK;
  }
};

int Serve() {
  auto* factory = new orvalis::test::ComFactory([]() -> IDispatch* { return new EmptyObject; });
  DWORD registration = 0;
  const HRESULT result =
      CoRegisterClassObject(kEmptyClass, factory, CLSCTX_LOCAL_SERVER, REGCLS_MULTIPLEUSE, &registration);
  std::cout << "serving " << std::hex << result << std::endl;
  MSG message;
  while (GetMessageW(&message, nullptr, 0, 0) > 0) DispatchMessageW(&message);
  CoRevokeClassObject(registration);
  factory->Release();
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
  auto* weather = orvalis::test::CreateElsewhere<IDispatch>(CLSID_Weather);
  auto* empty = orvalis::test::CreateElsewhere<IDispatch>(kEmptyClass);
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
  if (command == "serve") code = Serve();
  if (command == "measure" && argc > 2) code = MeasureReads(std::stoi(argv[2]));
  CoUninitialize();
  return code;
}
