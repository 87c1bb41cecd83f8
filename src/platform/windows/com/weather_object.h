#pragma once

#include <windows.h>

// After windows.h, whose types they use.
#include <oleauto.h>

#include <functional>
#include <memory>
#include <string>

#include "server/weather.h"
#include "weather_idl.h"

namespace orvalis {

/// One client's `Weather` as an automation object: early bound, late bound, and with errors that either can read. It
/// lives in the one thread's apartment; what waits serves other calls and the windows meanwhile.
class WeatherObject final : public IWeather, public ISupportErrorInfo {
 public:
  struct Parts {
    std::unique_ptr<Weather> weather;
    ITypeInfo* type;  ///< of IWeather; the object takes a reference of its own
    /// Called when the last reference is gone, before `weather` is.
    std::function<void(WeatherObject*)> released;
  };

  /// With one reference, which is the caller's.
  explicit WeatherObject(Parts parts);
  WeatherObject(const WeatherObject&) = delete;
  WeatherObject& operator=(const WeatherObject&) = delete;

  /// The program ends: whatever the client asks from now on is answered with the system's error for that.
  void Detach() { parts_.weather.reset(); }

  STDMETHODIMP QueryInterface(REFIID interface_id, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT index, LCID locale, ITypeInfo** type) override;
  STDMETHODIMP GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* arguments, VARIANT* result,
                      EXCEPINFO* exception, UINT* wrong_argument) override;

  STDMETHODIMP InterfaceSupportsErrorInfo(REFIID interface_id) override;

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
  ~WeatherObject();

  template <typename Value>
  HRESULT Read(WeatherMember member, Value* value);
  /// Starts what ends by a `Weather::Done` and waits for it, with events and calls going on.
  HRESULT Wait(const std::function<void(const Weather::Done&)>& start);

  Parts parts_;
  ULONG references_ = 1;
};

}  // namespace orvalis
