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

/// One client's `Weather` as an automation object, early and late bound, with errors that both kinds of client can
/// read. It lives in the apartment of the program's one thread; while a call waits, other calls and the windows are
/// served.
class WeatherObject final : public IWeather, public ISupportErrorInfo {
 public:
  struct Parts {
    std::unique_ptr<Weather> weather;
    ITypeInfo* type;  ///< of IWeather; the object adds its own reference
    /// Called after the last reference was released, before `weather` is destroyed.
    std::function<void(WeatherObject*)> released;
  };

  /// Starts with one reference, which belongs to the caller.
  explicit WeatherObject(Parts parts);
  WeatherObject(const WeatherObject&) = delete;
  WeatherObject& operator=(const WeatherObject&) = delete;

  /// The program is ending: every later call of the client returns RPC_E_DISCONNECTED.
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
  /// Starts an operation that ends with a `Weather::Done` and waits for it, while events and calls are served.
  HRESULT Wait(const std::function<void(const Weather::Done&)>& start);

  Parts parts_;
  ULONG references_ = 1;
};

}  // namespace orvalis
