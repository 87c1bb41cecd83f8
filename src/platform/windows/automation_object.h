#pragma once

#include <cstdint>
#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

#include "platform/windows/windows_error.h"

namespace orvalis {

/// This thread may use automation objects, as long as this lives. Throws RunTimeError.
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

/// A value on its way to or from an automation object.
class Variant {
 public:
  Variant() { VariantInit(&value_); }
  Variant(std::string_view text);  // NOLINT(google-explicit-constructor): arguments are written as they are
  Variant(std::int32_t number);    // NOLINT(google-explicit-constructor)
  Variant(bool flag);              // NOLINT(google-explicit-constructor)
  Variant(const char* text) : Variant(std::string_view(text)) {}         // NOLINT(google-explicit-constructor)
  Variant(const std::string& text) : Variant(std::string_view(text)) {}  // NOLINT(google-explicit-constructor)
  Variant(const Variant& other);
  Variant& operator=(const Variant& other);
  Variant(Variant&& other) noexcept : value_(other.value_) { VariantInit(&other.value_); }
  Variant& operator=(Variant&& other) noexcept;
  ~Variant() { VariantClear(&value_); }

  /// Converted where that is possible; throws RunTimeError kTypeMismatch otherwise. Nothing at all is "".
  [[nodiscard]] std::string Text() const;
  [[nodiscard]] bool Flag() const;

  [[nodiscard]] VARIANT* get() { return &value_; }

 private:
  VARIANT value_{};
};

/// An automation object known by its ProgID alone, used by the names of its members. A failed use is a RunTimeError
/// that names object and member.
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
