#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>

namespace orvalis {

// What a client gets when a member cannot serve it: a number that it can test and a text for its user.

/// The automation system's base of an object's own error numbers.
constexpr std::uint32_t kObjectError = 0x80040000;

constexpr auto ErrNotImplemented = static_cast<std::int32_t>(kObjectError + 0x400);
constexpr auto ErrNotConnected = static_cast<std::int32_t>(kObjectError + 0x402);

/// Behind the member's label, or alone: it begins with a blank in either case.
constexpr std::string_view kNotImplementedText = " is not implemented by this Orvalis server.";
constexpr std::string_view kNotConnectedText = "The Orvalis unit is not connected";
/// Nothing is out of range yet: no member takes a value that can be.
constexpr std::string_view kOutOfRangeText = "The value is out of range";
constexpr std::string_view kErrorSource = "Orvalis";

/// An error of the `Weather` object itself. What else fails in a member reaches the client as a RunTimeError.
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
