#include "platform/windows/com/weather_object.h"

#include <QEventLoop>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace orvalis {
namespace {

// How each type of a property travels.
VARIANT_BOOL ToAutomation(bool value) { return value ? VARIANT_TRUE : VARIANT_FALSE; }
LONG ToAutomation(std::int32_t value) { return value; }
float ToAutomation(float value) { return value; }
double ToAutomation(double value) { return value; }
BSTR ToAutomation(const std::string& value) { return ToBstr(value); }

}  // namespace

template <typename Value>
HRESULT WeatherObject::Read(WeatherMember member, Value* value) {
  if (value == nullptr) return E_POINTER;
  *value = {};
  if (weather() == nullptr) return RPC_E_DISCONNECTED;
  try {
    const WeatherValue read = weather()->Get(member);
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
    return Failed(std::current_exception());
  }
}

HRESULT WeatherObject::Wait(const std::function<void(const Weather::Done&)>& start) {
  struct Outcome {
    bool done = false;
    std::exception_ptr error;
    QEventLoop* waiting = nullptr;
  };
  if (weather() == nullptr) return RPC_E_DISCONNECTED;
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
    result = Failed(std::current_exception());
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
  return Wait([this, value](const Weather::Done& done) { weather()->SetConnected(value != VARIANT_FALSE, done); });
}

STDMETHODIMP WeatherObject::Halt() {
  if (weather() == nullptr) return RPC_E_DISCONNECTED;
  try {
    weather()->Halt();
    return S_OK;
  } catch (...) {
    return Failed(std::current_exception());
  }
}

STDMETHODIMP WeatherObject::SetupDialog() {
  return Wait([this](const Weather::Done& done) { weather()->SetupDialog(done); });
}

}  // namespace orvalis
