#pragma once

#include "command_parser.h"
#include "field.h"
#include "text.h"

namespace orvalis_unit {

// The part of the unit that works without being asked: what it does about its heater and its relay. A closed relay
// means that it is not safe to observe.
class AlarmLogic {
 public:
  struct Outputs {
    bool heater;
    bool relay;
  };

  // Looks at the sensors once. `unit_time` must not go back from one call to the next; the rain-on time is measured
  // with it.
  [[nodiscard]] Outputs Step(const Readings& readings, const Settings& settings, Time unit_time);

 private:
  bool AnyAlarm(const Readings& readings, const Settings& settings, Time unit_time);

  bool is_cloudy_ = false;
  bool has_rained_ = false;
  Time last_rain_{};
};

}  // namespace orvalis_unit
