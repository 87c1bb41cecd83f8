#include "console.h"

#include <stdexcept>
#include <vector>

namespace orvalis_unit {
namespace {

using Arguments = std::vector<std::string_view>;

Field FieldOf(std::string_view word) {
  const auto field = FieldByName(word);
  if (!field) throw std::invalid_argument("unknown field " + Quoted(word));
  return *field;
}

double SecondsOf(std::string_view word) {
  const auto seconds = ParseSeconds(word);
  if (!seconds) throw std::invalid_argument(Quoted(word) + " is not a number of seconds");
  return *seconds;
}

void Expect(bool form_is_right, const char* form) {
  if (!form_is_right) throw std::invalid_argument(std::string("expected: ") + form);
}

void DoFault(const Arguments& words, SensorUnit& unit, Time now, ConsoleReply& reply) {
  Expect(words.size() == 2 || words.size() == 3, "fault KIND[=NUMBER] [SECONDS], or fault none");
  if (words[1] == "none") {
    Expect(words.size() == 2, "fault none");
    unit.Faults().Clear();
    return;
  }
  Expect(words[1].find(':') == std::string_view::npos, "fault KIND[=NUMBER] [SECONDS]");
  const FaultRule rule = ParseFaultRule(words[1]);
  std::optional<double> seconds;
  if (words.size() == 3) seconds = SecondsOf(words[2]);
  if (rule.kind == FaultKind::kDrop) {
    reply.drop = seconds.value_or(kDropSeconds);
  } else {
    unit.Faults().Strike(rule.kind, seconds, now, rule.amount);
  }
}

// The commands whose only argument is a number of seconds.
struct TimedCommand {
  std::string_view verb;
  void (*apply)(SensorUnit& unit, Time seconds, Time now);
};

constexpr TimedCommand kTimedCommands[] = {
    {"delay", [](SensorUnit& unit, Time seconds, Time) { unit.LineBridge().SetDelay(seconds); }},
    {"bursts", [](SensorUnit& unit, Time seconds, Time) { unit.LineBridge().SetBursts(seconds); }},
    {"stall", [](SensorUnit& unit, Time seconds, Time now) { unit.LineBridge().StallUntil(now + seconds); }},
    {"power", [](SensorUnit& unit, Time seconds, Time now) { unit.SwitchOff(now + seconds); }},
};

bool DoTimed(const Arguments& words, SensorUnit& unit, Time now) {
  for (const TimedCommand& command : kTimedCommands) {
    if (words[0] != command.verb) continue;
    Expect(words.size() == 2, "a number of seconds");
    command.apply(unit, FromSeconds(SecondsOf(words[1])), now);
    return true;
  }
  return false;
}

void Do(const Arguments& words, SensorUnit& unit, Time now, ConsoleReply& reply) {
  if (DoTimed(words, unit, now)) return;
  const std::string_view verb = words[0];
  if (verb == "set") {
    Expect(words.size() == 3, "set FIELD VALUE");
    const Field field = FieldOf(words[1]);
    unit.Pin(field, ParseFieldValue(field, words[2]));
  } else if (verb == "release") {
    Expect(words.size() == 2, "release FIELD");
    unit.Pin(FieldOf(words[1]), std::nullopt);
  } else if (verb == "fault") {
    DoFault(words, unit, now, reply);
  } else if (verb == "drop") {
    Expect(words.size() == 2, "drop SECONDS");
    reply.drop = SecondsOf(words[1]);
  } else if (verb == "time") {
    Expect(words.size() == 2, "time H:MM:SS, or a number of seconds");
    const auto time = ParseTime(words[1]);
    if (!time) throw std::invalid_argument(Quoted(words[1]) + " is not a time");
    unit.JumpTo(*time, now);
  } else if (verb == "quit") {
    Expect(words.size() == 1, "quit");
    reply.quit = true;
  } else {
    throw std::invalid_argument("unknown command " + Quoted(verb) +
                                "; the commands are set release fault drop time delay bursts "
                                "stall power quit");
  }
}

}  // namespace

ConsoleReply RunConsoleLine(std::string_view line, SensorUnit& unit, Time now) {
  ConsoleReply reply;
  const Arguments words = Words(line);
  if (words.empty()) return reply;
  try {
    Do(words, unit, now, reply);
    reply.text = "ok";
    for (const std::string_view word : words) reply.text.append(" ").append(word);
  } catch (const std::invalid_argument& error) {
    reply.text = std::string("error ") + error.what();
  }
  return reply;
}

}  // namespace orvalis_unit
