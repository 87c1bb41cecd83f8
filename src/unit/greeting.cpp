#include "unit/greeting.h"

namespace orvalis {
namespace {

constexpr int kBitsPerSecond = 9600;
constexpr std::string_view kWake = "#";
constexpr std::string_view kAcknowledge = "\x06";

}  // namespace

void PrepareForUnit(SerialPort& port, const std::string& name) {
  port.SetPort(name);
  port.SetSpeed(kBitsPerSecond);
  port.SetReceiveTimeout(kReceiveTimeout);
}

void SendGreeting(SerialPort& port) {
  port.Transmit(kWake);
  port.Transmit(kAcknowledge);
}

GreetingAnswer JudgeGreeting(const SerialPort::Received& answer) {
  if (answer.outcome != SerialPort::Outcome::kComplete) return GreetingAnswer::kNothing;
  return answer.text == kGreetingAnswer ? GreetingAnswer::kUnit : GreetingAnswer::kOther;
}

}  // namespace orvalis
