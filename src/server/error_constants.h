#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace orvalis {

// Errors of the automation object: a number for the client and a text for its user.

/// The automation system's base for an object's own error numbers.
constexpr std::uint32_t kObjectError = 0x80040000;

constexpr auto ErrNotImplemented = static_cast<std::int32_t>(kObjectError + 0x400);
constexpr auto ErrNotConnected = static_cast<std::int32_t>(kObjectError + 0x402);

/// Used after the member's label or alone, with the leading blank in both cases.
constexpr std::string_view kNotImplementedText = " is not implemented by this Orvalis server.";
constexpr std::string_view kNotConnectedText = "The Orvalis unit is not connected";
/// Not raised by any member yet.
constexpr std::string_view kOutOfRangeText = "The value is out of range";
constexpr std::string_view kErrorSource = "Orvalis";

/// An error of the `Weather` object itself. Other failures reach the client as a RunTimeError.
class AutomationError : public std::runtime_error {
 public:
  AutomationError(std::int32_t number, const std::string& description)
      : std::runtime_error(description), number_(number) {}

  /// `ErrNotImplemented` or `ErrNotConnected`.
  [[nodiscard]] std::int32_t number() const { return number_; }

 private:
  std::int32_t number_;
};

}  // namespace orvalis
