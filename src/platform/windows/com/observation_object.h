#pragma once

#include <functional>
#include <utility>

#include "platform/windows/com/client_object.h"
#include "server/observation_members.h"
#include "weather_idl.h"

namespace orvalis {

/// The observation as an automation object, for one client.
class ObservationObject final : public ClientObject<IObservation> {
 public:
  /// `reader` must outlive the object's attachment to the program.
  ObservationObject(ClientObjectParts parts, const ObservationReader& reader)
      : ClientObject(std::move(parts)), reader_(reader) {}

  STDMETHODIMP get_Safe(VARIANT_BOOL* value) override;
  STDMETHODIMP get_Since(double* value) override;
  STDMETHODIMP get_Reasons(VARIANT* value) override;
  STDMETHODIMP get_Explanation(BSTR* value) override;
  STDMETHODIMP get_AgeSeconds(double* value) override;
  STDMETHODIMP get_Source(BSTR* value) override;
  STDMETHODIMP get_ValueNames(VARIANT* value) override;
  STDMETHODIMP get_Value(BSTR name, double* value) override;

 private:
  ~ObservationObject() override = default;

  [[nodiscard]] UINT ArgumentsOf(DISPID id) const override;

  /// Answers with what `read` returns.
  template <typename Value, typename Reading>
  HRESULT Answer(Value* value, Reading read);
  /// Answers with a member of the table.
  template <typename Value>
  HRESULT Read(ObservationProperty property, Value* value);

  const ObservationReader& reader_;
};

}  // namespace orvalis
