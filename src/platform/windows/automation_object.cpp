#include "platform/windows/automation_object.h"

#include <objbase.h>
#include <oleauto.h>

#include <utility>
#include <vector>

namespace orvalis {
namespace {

BSTR NewBstr(std::string_view text) {
  const std::wstring wide = Wide(text);
  return SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
}

/// For calls that take a non-const argument but do not change it.
VARIANT* Source(const VARIANT& value) { return const_cast<VARIANT*>(&value); }

}  // namespace

ComApartment::ComApartment() {
  CheckCom("automation cannot be used", CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED));
}

ComApartment::~ComApartment() { CoUninitialize(); }

Variant::Variant(std::string_view text) {
  value_.vt = VT_BSTR;
  value_.bstrVal = NewBstr(text);
}

Variant::Variant(std::int32_t number) {
  value_.vt = VT_I4;
  value_.lVal = number;
}

Variant::Variant(bool flag) {
  value_.vt = VT_BOOL;
  value_.boolVal = flag ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(const Variant& other) {
  VariantInit(&value_);
  CheckCom("a value cannot be copied", VariantCopy(&value_, Source(other.value_)));
}

Variant& Variant::operator=(const Variant& other) {
  if (this != &other) *this = Variant(other);
  return *this;
}

Variant& Variant::operator=(Variant&& other) noexcept {
  std::swap(value_, other.value_);
  return *this;
}

std::string Variant::Text() const {
  Variant text;
  if (value_.vt == VT_EMPTY || value_.vt == VT_NULL) return {};
  CheckCom("the answer is not a text", VariantChangeType(text.get(), Source(value_), 0, VT_BSTR));
  const BSTR letters = text.value_.bstrVal;
  return letters == nullptr ? std::string() : Narrow({letters, SysStringLen(letters)});
}

bool Variant::Flag() const {
  Variant flag;
  CheckCom("the answer is neither true nor false", VariantChangeType(flag.get(), Source(value_), 0, VT_BOOL));
  return flag.value_.boolVal != VARIANT_FALSE;
}

bool AutomationObject::IsRegistered(const std::string& prog_id) {
  CLSID class_id{};
  return SUCCEEDED(CLSIDFromProgID(Wide(prog_id).c_str(), &class_id));
}

AutomationObject::AutomationObject(const std::string& prog_id) : prog_id_(prog_id) {
  const std::string what = "cannot create the object \"" + prog_id + "\"";
  CLSID class_id{};
  CheckCom(what, CLSIDFromProgID(Wide(prog_id).c_str(), &class_id));
  void* object = nullptr;
  CheckCom(what, CoCreateInstance(class_id, nullptr, CLSCTX_SERVER, IID_IDispatch, &object));
  object_.reset(static_cast<IDispatch*>(object));
}

Variant AutomationObject::Call(const std::string& member, std::initializer_list<Variant> arguments) {
  return Invoke(member, DISPATCH_METHOD, arguments);
}

Variant AutomationObject::Get(const std::string& property) { return Invoke(property, DISPATCH_PROPERTYGET, {}); }

void AutomationObject::Put(const std::string& property, Variant value) {
  Invoke(property, DISPATCH_PROPERTYPUT, {std::move(value)});
}

Variant AutomationObject::Invoke(const std::string& member, WORD kind, std::initializer_list<Variant> arguments) {
  const std::string what = "\"" + prog_id_ + "\", " + member;
  std::wstring name = Wide(member);
  LPOLESTR names = name.data();
  DISPID id = 0;
  CheckCom(what, object_->GetIDsOfNames(IID_NULL, &names, 1, LOCALE_USER_DEFAULT, &id));

  // Automation takes the arguments from the last to the first.
  std::vector<Variant> copies(std::rbegin(arguments), std::rend(arguments));
  std::vector<VARIANT> reversed;
  reversed.reserve(copies.size());
  for (Variant& copy : copies) reversed.push_back(*copy.get());
  DISPID put = DISPID_PROPERTYPUT;
  DISPPARAMS parameters{.rgvarg = reversed.data(),
                        .rgdispidNamedArgs = kind == DISPATCH_PROPERTYPUT ? &put : nullptr,
                        .cArgs = static_cast<UINT>(reversed.size()),
                        .cNamedArgs = kind == DISPATCH_PROPERTYPUT ? 1U : 0U};
  Variant result;
  EXCEPINFO said{};
  UINT wrong_argument = 0;
  const HRESULT outcome =
      object_->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, kind, &parameters,
                      kind == DISPATCH_PROPERTYPUT ? nullptr : result.get(), &said, &wrong_argument);
  if (FAILED(outcome)) throw ComError(what, outcome, &said);
  return result;
}

}  // namespace orvalis
