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

// The unit itself, without the wire: bytes go in with Receive, bytes come out with TakeDue. All times are given from
// outside and must not go back.
class SensorUnit {
 public:
  struct Configuration {
    double speed = 1.0;    // seconds of weather and of the unit's own clock a second
    bool is_fast = false;  // bytes take no time on the line
    std::vector<FaultRule> faults{};
    std::uint32_t seed = 1;
    double delay = 0.0;   // seconds that the line keeps the answers
    double bursts = 0.0;  // seconds from one delivery of what gathered in the line to the next; 0: no bursts
  };

  // `recorder` must outlive the unit.
  SensorUnit(Scenario scenario, const Configuration& configuration, Recorder& recorder);

  // Takes bytes from the line; answers are queued on Line().
  void Receive(std::string_view bytes, Time now);

  // Looks at the sensors, as the unit does by itself. Call it once a second, so that rain between two requests is
  // not missed.
  void Sample(Time now) {
    if (now >= off_until_) (void)CurrentReadings(now);
  }

  // What comes out of the line by `now`, and when more will; nothing when all is out.
  std::string TakeDue(Time now);
  std::optional<Time> NextDue() const;

  Transmitter& Line() { return line_; }
  const Transmitter& Line() const { return line_; }

  // The frame that would be sent now.
  std::string CurrentFrame(Time now) { return FrameText(CurrentReadings(now)); }

  // Holds a field at a value, whatever the scenario and the unit's own logic say; nothing lets it go again.
  void Pin(Field field, std::optional<double> value) { pinned_[Index(field)] = value; }

  // Takes the unit's power away until then: it hears and says nothing, and comes back with its power-up settings.
  void SwitchOff(Time until);

  // Goes to `seconds` in the scenario. The unit forgets the weather before the jump, so that what it does after it
  // depends on that place alone.
  void JumpTo(double seconds, Time now);

  // Seconds within the scenario's period.
  double ScenarioTime(Time now) const;

  FaultBox& Faults() { return faults_; }
  Bridge& LineBridge() { return bridge_; }

  // How long the line shall be away, when a drop fault has struck since the last call. The owner of the line takes
  // it down and calls LineLost.
  std::optional<double> TakeDrop();

  // Forgets what was under way on the line. The unit keeps its settings: only its cable was pulled.
  void LineLost();

 private:
  Readings CurrentReadings(Time now);
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
