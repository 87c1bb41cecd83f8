// The simulated unit: its options in the first line, then its scenario up to a line "---", then a line every half
// second: "<" and bytes from the serial line, or a command of its standard input. The program's own parser reads its
// frames, and it reads the program's commands.
#include <optional>
#include <string>
#include <vector>

#include "console.h"
#include "options.h"
#include "reading/sensor_frame.h"
#include "sensor_unit.h"
#include "tests/fuzz/fuzz.h"
#include "unit/unit_commands.h"

namespace {

using namespace orvalis_unit;
using orvalis::fuzz::Input;
using orvalis::fuzz::Require;

/// What the program sends for `value` is a command to the unit, of the same value.
void CheckCommands(std::int32_t value) {
  for (const orvalis::UnitCommand& command : orvalis::UnitCommands()) {
    if (command.form == orvalis::UnitCommand::Form::kOnOff) value &= 1;
    CommandParser parser;
    std::optional<Request> last;
    for (const char byte : command.Encode(value)) {
      Require(!last, "a command ends with its last byte", command.letters);
      last = parser.Feed(byte);
    }
    Require(last && last->kind == RequestKind::kCommand, "the unit understands a command", command.Encode(value));
    Require(last->value == command.Received(value), "the unit takes what the program says", command.Encode(value));
  }
}

void CheckScenario(const Scenario& scenario, double seconds) {
  Require(scenario.Fold(seconds) >= 0 && scenario.Fold(seconds) <= scenario.Period(), "a time is within the period");
  for (const FieldRow& row : FieldTable()) {
    const auto value = scenario.At(row.field, seconds);
    Require(!value || (*value >= row.lowest && *value <= row.highest), "a value is within its limits", row.name);
  }
}

void Run(const Options& options, const Scenario& scenario, Input& input) {
  Recorder recorder;
  SensorUnit unit(scenario, options.unit, recorder);
  Time now{};
  for (int lines = 0; !input.empty() && lines < 200; ++lines) {
    now += std::chrono::milliseconds(500);
    const std::string_view line = input.Until('\n');
    if (line.starts_with('<')) {
      unit.Receive(line.substr(1), now);
    } else {
      const ConsoleReply reply = RunConsoleLine(line, unit, now);
      Require(reply.text.empty() || reply.text.starts_with("ok ") || reply.text.starts_with("error "),
              "a command is answered", reply.text);
    }
    unit.Sample(now);
    if (unit.TakeDrop()) unit.LineLost();
    static_cast<void>(unit.TakeDue(now));
    Require(!unit.NextDue() || *unit.NextDue() > now, "nothing is due twice");
    const orvalis::SensorFrame frame(unit.CurrentFrame(now));
    Require(frame.text().size() == 117 && frame.IsComplete() && frame.IsUndamaged(), "a frame is whole", frame.text());
    CheckScenario(scenario, unit.ScenarioTime(now));
  }
}

}  // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  Input input(data, size);
  const std::string_view first = input.Until('\n');
  std::string scenario;
  for (std::string_view line; !input.empty() && line != "---";) {
    line = input.Until('\n');
    if (line != "---") scenario.append(line).append("\n");
  }
  Input number = input;
  CheckCommands(number.Raw<std::int32_t>());
  try {
    const std::vector<std::string_view> words = Words(first);
    const Options options = ParseOptions(words);
    Run(options, Scenario::Parse(scenario, "a"), input);
  } catch (const UsageError&) {
  } catch (const ScenarioError&) {
  }
  return 0;
}
