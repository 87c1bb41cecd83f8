#pragma once

#include "command_parser.h"
#include "field.h"
#include "text.h"

namespace orvalis_unit {

// The unit's autonomous control of its heater and relay. A closed relay means that it is not safe to observe.
class AlarmLogic {
 public:
  struct Outputs {
    bool heater;
    bool relay;
  };

  // Evaluates the sensors once. `unit_time`, used for the rain-on time, must not go back between calls.
  [[nodiscard]] Outputs Step(const Readings& readings, const Settings& settings, Time unit_time);

 private:
  bool AnyAlarm(const Readings& readings, const Settings& settings, Time unit_time);

  bool is_cloudy_ = false;
  bool has_rained_ = false;
  Time last_rain_{};
};

}  // namespace orvalis_unit
