#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "platform/windows/windows_error.h"

namespace orvalis {

/// Lets this thread use automation objects during its lifetime. Throws RunTimeError.
class ComApartment {
 public:
  ComApartment();
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;
  ~ComApartment();
};

struct ComRelease {
  void operator()(IUnknown* object) const { object->Release(); }
};
/// Owns a reference to an automation object.
template <typename Interface>
using ComPtr = std::unique_ptr<Interface, ComRelease>;

/// A value passed to or returned by an automation object.
class Variant {
 public:
  Variant() { VariantInit(&value_); }
  Variant(std::string_view text);  // NOLINT(google-explicit-constructor): arguments are passed as plain values
  Variant(std::int32_t number);    // NOLINT(google-explicit-constructor)
  Variant(bool flag);              // NOLINT(google-explicit-constructor)
  Variant(const char* text) : Variant(std::string_view(text)) {}         // NOLINT(google-explicit-constructor)
  Variant(const std::string& text) : Variant(std::string_view(text)) {}  // NOLINT(google-explicit-constructor)
  Variant(const Variant& other);
  Variant& operator=(const Variant& other);
  Variant(Variant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
  Variant& operator=(Variant&& other) noexcept;
  ~Variant() { VariantClear(&value_); }

  /// Converted if possible; otherwise throws RunTimeError kTypeMismatch. An empty value is "".
  [[nodiscard]] std::string Text() const;
  [[nodiscard]] bool Flag() const;

  [[nodiscard]] VARIANT* get() { return &value_; }

 private:
  VARIANT value_{};
};

/// An automation object created by its ProgID and used late bound, by member names. A failure is a RunTimeError that
/// names the object and the member.
class AutomationObject {
 public:
  [[nodiscard]] static bool IsRegistered(const std::string& prog_id);

  explicit AutomationObject(const std::string& prog_id);

  Variant Call(const std::string& member, std::initializer_list<Variant> arguments = {});
  [[nodiscard]] Variant Get(const std::string& property);
  void Put(const std::string& property, Variant value);

 private:
  Variant Invoke(const std::string& member, WORD kind, std::initializer_list<Variant> arguments);

  std::string prog_id_;
  ComPtr<IDispatch> object_;
};

}  // namespace orvalis
