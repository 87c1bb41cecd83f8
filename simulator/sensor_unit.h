#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "alarm_logic.h"
#include "bridge.h"
#include "command_parser.h"
#include "fault.h"
#include "field.h"
#include "recorder.h"
#include "scenario.h"
#include "transmitter.h"

namespace orvalis_unit {

// The unit itself, without the line: bytes go in through Receive and come out through TakeDue. All times are passed in
// and must not go back.
class SensorUnit {
 public:
  struct Configuration {
    double speed = 1.0;    // seconds of weather and unit time per second
    bool is_fast = false;  // bytes take no time on the line
    std::vector<FaultRule> faults{};
    std::uint32_t seed = 1;
    double delay = 0.0;   // seconds by which the line delays answers
    double bursts = 0.0;  // seconds between deliveries of gathered bytes; 0: no bursts
  };

  // `recorder` must outlive the unit.
  SensorUnit(Scenario scenario, const Configuration& configuration, Recorder& recorder);

  // Takes bytes from the line; answers are queued on Line().
  void Receive(std::string_view bytes, Time now);

  // Samples the sensors, as the unit does on its own. Call once a second, so that rain between two requests is not
  // missed.
  void Sample(Time now) {
    if (now >= off_until_) (void)CurrentReadings(now);
  }

  // The bytes that leave the line by `now`, and when the next ones will, if any.
  std::string TakeDue(Time now);
  std::optional<Time> NextDue() const;

  Transmitter& Line() { return line_; }
  const Transmitter& Line() const { return line_; }

  // What each field of a frame would say now.
  Readings CurrentReadings(Time now);

  // The frame as it would be sent now.
  std::string CurrentFrame(Time now) { return FrameText(CurrentReadings(now)); }

  // Fixes a field at a value, overriding the scenario and the unit's logic; nothing releases it.
  void Pin(Field field, std::optional<double> value) { pinned_[Index(field)] = value; }

  // Switches the unit off until then: it ignores input, sends nothing, and comes back with its power-up settings.
  void SwitchOff(Time until);

  // Jumps to `seconds` in the scenario. The unit forgets the weather before the jump, so that its behaviour depends
  // only on the new position.
  void JumpTo(double seconds, Time now);

  // Seconds within the scenario's period.
  double ScenarioTime(Time now) const;

  FaultBox& Faults() { return faults_; }
  Bridge& LineBridge() { return bridge_; }

  // The duration of a drop fault that struck since the last call, if any. The owner of the line takes it down and calls
  // LineLost.
  std::optional<double> TakeDrop();

  // Discards everything in transit. The unit keeps its settings: only its cable was pulled.
  void LineLost();

 private:
  void Handle(const Request& request, Time now);
  void Reply(AnswerKind kind, std::string text, Time now);

  Scenario scenario_;
  double speed_;
  double offset_ = 0.0;
  Recorder& recorder_;
  CommandParser parser_;
  Settings settings_ = PowerUpSettings();
  std::array<std::optional<double>, kFieldCount> pinned_{};
  AlarmLogic logic_;
  FaultBox faults_;
  Transmitter line_;
  Bridge bridge_;
  Time off_until_{};
  std::optional<double> drop_;
};

}  // namespace orvalis_unit
