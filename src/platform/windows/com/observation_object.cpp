#include "platform/windows/com/observation_object.h"

#include <algorithm>
#include <stdexcept>
#include <type_traits>

#include "platform/windows/windows_error.h"

namespace orvalis {
namespace {

/// The age before the first reading, in seconds: longer than any real one, and a number that scripts can print, round
/// and convert, as they cannot an infinite one.
constexpr double kNeverRead = 1e9;

constexpr DISPID kValueId = 8;

/// Scripts take an array only when each of its elements may be of any type.
template <typename Names, typename TextOf>
VARIANT ToArray(const Names& names, TextOf text_of) {
  SAFEARRAY* const array = SafeArrayCreateVector(VT_VARIANT, 0, static_cast<ULONG>(names.size()));
  if (array == nullptr) throw std::bad_alloc();
  VARIANT* elements = nullptr;
  if (SUCCEEDED(SafeArrayAccessData(array, reinterpret_cast<void**>(&elements)))) {
    for (const auto& name : names) {
      elements->vt = VT_BSTR;
      elements->bstrVal = ToBstr(text_of(name));
      ++elements;
    }
    SafeArrayUnaccessData(array);
  }
  VARIANT value{};
  value.vt = VT_ARRAY | VT_VARIANT;
  value.parray = array;
  return value;
}

// How each type of a member travels. Scripts have no whole numbers of 64 bits.
VARIANT_BOOL ToAutomation(bool value) { return value ? VARIANT_TRUE : VARIANT_FALSE; }
double ToAutomation(std::int64_t value) { return static_cast<double>(value); }
double ToAutomation(double value) { return std::min(value, kNeverRead); }
BSTR ToAutomation(const std::string& value) { return ToBstr(value); }
VARIANT ToAutomation(const std::vector<std::string_view>& names) {
  return ToArray(names, [](std::string_view name) { return name; });
}
VARIANT ToAutomation(const std::vector<NamedValue>& values) {
  return ToArray(values, [](const NamedValue& value) { return value.name; });
}

}  // namespace

UINT ObservationObject::ArgumentsOf(DISPID id) const { return id == kValueId ? 1 : 0; }

template <typename Value, typename Reading>
HRESULT ObservationObject::Answer(Value* value, Reading read) {
  if (value == nullptr) return E_POINTER;
  *value = {};
  if (weather() == nullptr) return RPC_E_DISCONNECTED;
  try {
    *value = read();
    return S_OK;
  } catch (...) {
    return Failed(std::current_exception());
  }
}

template <typename Value>
HRESULT ObservationObject::Read(ObservationProperty property, Value* value) {
  return Answer(value, [&]() -> Value {
    const ObservationMember& member = MemberOf(property);
    return std::visit(
        [](const auto& held) -> Value {
          if constexpr (std::is_same_v<decltype(ToAutomation(held)), Value>) {
            return ToAutomation(held);
          } else {
            throw std::logic_error("a property is not of its type");
          }
        },
        member.read(reader_.Look(member.name, weather()->caller())));
  });
}

STDMETHODIMP ObservationObject::get_Safe(VARIANT_BOOL* value) { return Read(ObservationProperty::kSafe, value); }
STDMETHODIMP ObservationObject::get_Since(double* value) { return Read(ObservationProperty::kSince, value); }
STDMETHODIMP ObservationObject::get_Reasons(VARIANT* value) { return Read(ObservationProperty::kReasons, value); }
STDMETHODIMP ObservationObject::get_Explanation(BSTR* value) { return Read(ObservationProperty::kExplanation, value); }
STDMETHODIMP ObservationObject::get_AgeSeconds(double* value) { return Read(ObservationProperty::kAgeSeconds, value); }
STDMETHODIMP ObservationObject::get_Source(BSTR* value) { return Read(ObservationProperty::kSource, value); }
STDMETHODIMP ObservationObject::get_ValueNames(VARIANT* value) { return Read(ObservationProperty::kValues, value); }
STDMETHODIMP ObservationObject::get_Value(BSTR name, double* value) {
  return Answer(value, [&] {
    const std::string wanted = Narrow(name == nullptr ? std::wstring_view() : std::wstring_view(name));
    return KnownValue(reader_.Look(wanted, weather()->caller()), wanted);
  });
}

}  // namespace orvalis
