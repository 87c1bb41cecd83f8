#pragma once

#include <stdexcept>
#include <string>
#include <utility>

#include "base/message.h"

namespace orvalis {

/// Thrown by a failed operation: a number for programs and a text for people.
///
/// It propagates to the nearest boundary (a client's call, a timer, a click, start-up), which shows and records it.
class RunTimeError : public std::runtime_error {
 public:
  enum Number : int {
    kInvalidCall = 5,           ///< an argument outside the domain of a function, such as the logarithm of 0
    kOverflow = 6,              ///< a whole number that does not fit its type
    kSubscriptOutOfRange = 9,   ///< an index outside its array
    kDivisionByZero = 11,       ///< a quotient without a value
    kTypeMismatch = 13,         ///< a text that does not convert to the requested type
    kFileNotFound = 53,         ///< a file or device that does not exist
    kPermissionDenied = 70,     ///< a file or device that this user may not access
    kPathFileAccess = 75,       ///< a file that cannot be written or read
    kDeviceUnavailable = 68,    ///< a device that exists but cannot be used now
    kCannotCreateObject = 429,  ///< an automation object that cannot be made
    kNoSuchMember = 438,        ///< a member that an automation object does not have
    kAutomationError = 440,     ///< an automation object's own failure
    kPortInUse = 8005,          ///< a serial or network port that another program has open
    kPortClosed = 8018,         ///< an operation on a serial port that is not open
    kReceiveTimedOut = 8020,    ///< nothing, or too little, was received in time
  };

  RunTimeError(Number number, const std::string& description)
      : std::runtime_error(description), number_(number), message_(description) {}
  /// For what windows show translated; `what` is English.
  RunTimeError(Number number, Message message)
      : std::runtime_error(message.English()), number_(number), message_(std::move(message)) {}
  RunTimeError(Number number, Phrase text) : RunTimeError(number, Message(text)) {}

  [[nodiscard]] Number number() const { return number_; }
  [[nodiscard]] const Message& message() const { return message_; }

 private:
  Number number_;
  Message message_;
};

/// What `error` says, for a window.
[[nodiscard]] inline Message MessageOf(const std::exception& error) {
  const auto* ours = dynamic_cast<const RunTimeError*>(&error);
  return ours != nullptr ? ours->message() : Message(std::string(error.what()));
}

}  // namespace orvalis
