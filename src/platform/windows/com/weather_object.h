#pragma once

#include <functional>

#include "platform/windows/com/client_object.h"
#include "weather_idl.h"

namespace orvalis {

/// One client's `Weather` as an automation object. What waits serves other calls and the windows meanwhile.
class WeatherObject final : public ClientObject<IWeather> {
 public:
  using ClientObject::ClientObject;

  STDMETHODIMP get_Safe(VARIANT_BOOL* value) override;
  STDMETHODIMP get_AmbientTemperature(float* value) override;
  STDMETHODIMP get_BarometricPressure(float* value) override;
  STDMETHODIMP get_Clouds(float* value) override;
  STDMETHODIMP get_DewPoint(float* value) override;
  STDMETHODIMP get_InsideTemperature(float* value) override;
  STDMETHODIMP get_Name(BSTR* value) override;
  STDMETHODIMP get_Precipitation(VARIANT_BOOL* value) override;
  STDMETHODIMP get_RelativeHumidity(float* value) override;
  STDMETHODIMP get_WindDirection(float* value) override;
  STDMETHODIMP get_WindVelocity(float* value) override;
  STDMETHODIMP get_Connected(VARIANT_BOOL* value) override;
  STDMETHODIMP put_Connected(VARIANT_BOOL value) override;
  STDMETHODIMP get_WindSpeedCloseD(LONG* value) override;
  STDMETHODIMP get_WindSpeedWarn(double* value) override;
  STDMETHODIMP get_Temperature(double* value) override;
  STDMETHODIMP Halt() override;
  STDMETHODIMP SetupDialog() override;

 private:
  ~WeatherObject() override = default;

  template <typename Value>
  HRESULT Read(WeatherMember member, Value* value);
  /// Starts an operation that ends with a `Weather::Done` and waits for it, while events and calls are served.
  HRESULT Wait(const std::function<void(const Weather::Done&)>& start);
};

}  // namespace orvalis
