#include "platform/windows/com/weather_object.h"

#include <QEventLoop>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include "base/run_time_error.h"
#include "platform/windows/windows_error.h"

namespace orvalis {
namespace {

/// Run-time error numbers reach a compiled client as errors of this facility, and a script as plain numbers.
constexpr HRESULT RunTimeResult(int number) { return MAKE_HRESULT(SEVERITY_ERROR, FACILITY_CONTROL, number); }

BSTR ToBstr(std::string_view text) {
  const std::wstring wide = Wide(text);
  return SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

/// Stores the text and the source where the client's side of the call looks for them.
HRESULT Raise(HRESULT number, const std::string& text) {
  ICreateErrorInfo* creator = nullptr;
  if (FAILED(CreateErrorInfo(&creator))) return number;
  creator->SetGUID(IID_IWeather);
  const BSTR description = ToBstr(text);
  const BSTR source = ToBstr(kErrorSource);
  creator->SetDescription(description);
  creator->SetSource(source);
  SysFreeString(description);
  SysFreeString(source);
  IErrorInfo* info = nullptr;
  if (SUCCEEDED(creator->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&info)))) {
    SetErrorInfo(0, info);
    info->Release();
  }
  creator->Release();
  return number;
}

/// The result for an exception that a member threw.
HRESULT ResultOf(const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const AutomationError& raised) {
    return Raise(raised.number(), raised.what());
  } catch (const RunTimeError& raised) {
    return Raise(RunTimeResult(raised.number()), raised.what());
  } catch (const std::exception& raised) {
    return Raise(E_FAIL, raised.what());
  }
}

// How each type of property is passed.
VARIANT_BOOL ToAutomation(bool value) { return value ? VARIANT_TRUE : VARIANT_FALSE; }
LONG ToAutomation(std::int32_t value) { return value; }
float ToAutomation(float value) { return value; }
double ToAutomation(double value) { return value; }
BSTR ToAutomation(const std::string& value) { return ToBstr(value); }

}  // namespace

WeatherObject::WeatherObject(Parts parts) : parts_(std::move(parts)) { parts_.type->AddRef(); }

WeatherObject::~WeatherObject() {
  parts_.released(this);
  parts_.type->Release();
}

STDMETHODIMP WeatherObject::QueryInterface(REFIID interface_id, void** object) {
  if (object == nullptr) return E_POINTER;
  if (interface_id == IID_IUnknown || interface_id == IID_IDispatch || interface_id == IID_IWeather) {
    *object = static_cast<IWeather*>(this);
  } else if (interface_id == IID_ISupportErrorInfo) {
    *object = static_cast<ISupportErrorInfo*>(this);
  } else {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  AddRef();
  return S_OK;
}

STDMETHODIMP_(ULONG) WeatherObject::AddRef() { return ++references_; }

STDMETHODIMP_(ULONG) WeatherObject::Release() {
  const ULONG left = --references_;
  if (left == 0) delete this;
  return left;
}

STDMETHODIMP WeatherObject::GetTypeInfoCount(UINT* count) {
  if (count == nullptr) return E_POINTER;
  *count = 1;
  return S_OK;
}

STDMETHODIMP WeatherObject::GetTypeInfo(UINT index, LCID /*locale*/, ITypeInfo** type) {
  if (type == nullptr) return E_POINTER;
  *type = nullptr;
  if (index != 0) return DISP_E_BADINDEX;
  parts_.type->AddRef();
  *type = parts_.type;
  return S_OK;
}

STDMETHODIMP WeatherObject::GetIDsOfNames(REFIID /*reserved*/, LPOLESTR* names, UINT count, LCID /*locale*/,
                                          DISPID* ids) {
  return DispGetIDsOfNames(parts_.type, names, count, ids);
}

STDMETHODIMP WeatherObject::Invoke(DISPID id, REFIID reserved, LCID /*locale*/, WORD flags, DISPPARAMS* arguments,
                                   VARIANT* result, EXCEPINFO* exception, UINT* wrong_argument) {
  if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
  if (arguments == nullptr) return E_INVALIDARG;
  // Not every system counts the arguments: only a property being set takes one.
  const bool is_put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  if (arguments->cArgs != (is_put ? 1U : 0U)) return DISP_E_BADPARAMCOUNT;
  SetErrorInfo(0, nullptr);  // an error left by another call must not become this one's
  return DispInvoke(static_cast<IWeather*>(this), parts_.type, id, flags, arguments, result, exception, wrong_argument);
}

STDMETHODIMP WeatherObject::InterfaceSupportsErrorInfo(REFIID interface_id) {
  return interface_id == IID_IWeather ? S_OK : S_FALSE;
}

template <typename Value>
HRESULT WeatherObject::Read(WeatherMember member, Value* value) {
  if (value == nullptr) return E_POINTER;
  *value = {};
  if (!parts_.weather) return RPC_E_DISCONNECTED;
  try {
    const WeatherValue read = parts_.weather->Get(member);
    std::visit(
        [value](const auto& held) {
          if constexpr (std::is_same_v<decltype(ToAutomation(held)), Value>) {
            *value = ToAutomation(held);
          } else {
            throw std::logic_error("a property has the wrong type");
          }
        },
        read);
    return S_OK;
  } catch (...) {
    return ResultOf(std::current_exception());
  }
}

HRESULT WeatherObject::Wait(const std::function<void(const Weather::Done&)>& start) {
  struct Outcome {
    bool done = false;
    std::exception_ptr error;
    QEventLoop* waiting = nullptr;
  };
  if (!parts_.weather) return RPC_E_DISCONNECTED;
  const auto outcome = std::make_shared<Outcome>();
  AddRef();  // the client may go away during its call
  HRESULT result = S_OK;
  try {
    start([outcome](const std::exception_ptr& error) {
      outcome->done = true;
      outcome->error = error;
      if (outcome->waiting != nullptr) outcome->waiting->quit();
    });
    if (!outcome->done) {
      QEventLoop loop;
      outcome->waiting = &loop;
      loop.exec();
      outcome->waiting = nullptr;
    }
    if (!outcome->done) result = RPC_E_DISCONNECTED;  // the program is ending
    if (outcome->error) std::rethrow_exception(outcome->error);
  } catch (...) {
    result = ResultOf(std::current_exception());
  }
  Release();
  return result;
}

STDMETHODIMP WeatherObject::get_Safe(VARIANT_BOOL* value) { return Read(WeatherMember::kSafe, value); }
STDMETHODIMP WeatherObject::get_AmbientTemperature(float* value) {
  return Read(WeatherMember::kAmbientTemperature, value);
}
STDMETHODIMP WeatherObject::get_BarometricPressure(float* value) {
  return Read(WeatherMember::kBarometricPressure, value);
}
STDMETHODIMP WeatherObject::get_Clouds(float* value) { return Read(WeatherMember::kClouds, value); }
STDMETHODIMP WeatherObject::get_DewPoint(float* value) { return Read(WeatherMember::kDewPoint, value); }
STDMETHODIMP WeatherObject::get_InsideTemperature(float* value) {
  return Read(WeatherMember::kInsideTemperature, value);
}
STDMETHODIMP WeatherObject::get_Name(BSTR* value) { return Read(WeatherMember::kName, value); }
STDMETHODIMP WeatherObject::get_Precipitation(VARIANT_BOOL* value) {
  return Read(WeatherMember::kPrecipitation, value);
}
STDMETHODIMP WeatherObject::get_RelativeHumidity(float* value) { return Read(WeatherMember::kRelativeHumidity, value); }
STDMETHODIMP WeatherObject::get_WindDirection(float* value) { return Read(WeatherMember::kWindDirection, value); }
STDMETHODIMP WeatherObject::get_WindVelocity(float* value) { return Read(WeatherMember::kWindVelocity, value); }
STDMETHODIMP WeatherObject::get_Connected(VARIANT_BOOL* value) { return Read(WeatherMember::kConnected, value); }
STDMETHODIMP WeatherObject::get_WindSpeedCloseD(LONG* value) { return Read(WeatherMember::kWindSpeedCloseD, value); }
STDMETHODIMP WeatherObject::get_WindSpeedWarn(double* value) { return Read(WeatherMember::kWindSpeedWarn, value); }
STDMETHODIMP WeatherObject::get_Temperature(double* value) { return Read(WeatherMember::kTemperature, value); }

STDMETHODIMP WeatherObject::put_Connected(VARIANT_BOOL value) {
  return Wait([this, value](const Weather::Done& done) { parts_.weather->SetConnected(value != VARIANT_FALSE, done); });
}

STDMETHODIMP WeatherObject::Halt() {
  if (!parts_.weather) return RPC_E_DISCONNECTED;
  try {
    parts_.weather->Halt();
    return S_OK;
  } catch (...) {
    return ResultOf(std::current_exception());
  }
}

STDMETHODIMP WeatherObject::SetupDialog() {
  return Wait([this](const Weather::Done& done) { parts_.weather->SetupDialog(done); });
}

}  // namespace orvalis
