#pragma once

#include <chrono>
#include <string>
#include <string_view>

#include "unit/serial_port.h"

namespace orvalis {

/// The longest that an answer of the unit takes.
inline constexpr std::chrono::seconds kReceiveTimeout{4};

/// The unit's answer to the greeting.
inline constexpr std::string_view kGreetingAnswer = "W";

/// Sets `port` up for a unit at `name`, without opening it.
void PrepareForUnit(SerialPort& port, const std::string& name);

/// Greets whatever is on the open `port`: all that is ever sent to a line before a unit has answered on it.
void SendGreeting(SerialPort& port);

/// What `answer` to a greeting shows.
enum class GreetingAnswer {
  kUnit,
  kNothing,  ///< no answer in time
  kOther,    ///< something that is not the unit
};
[[nodiscard]] GreetingAnswer JudgeGreeting(const SerialPort::Received& answer);

}  // namespace orvalis
