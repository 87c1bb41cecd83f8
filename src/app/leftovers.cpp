#include "app/leftovers.h"

#include <algorithm>

#include "base/text.h"

namespace orvalis {

void Leftovers::Refresh(Settings& settings) {
  if (!settings.CanTempComp || !settings.CanTemp) {
    temperature_compensation = false;
    compensation_state = 2;
  } else {
    compensation_state = temperature_compensation ? 1 : 0;
  }
  second_state = second_indicator ? 1 : 0;
  if (settings.Absolute) {
    const double highest = settings.WindSpeedCloseD;  // the template's maximum step
    if (settings.Position < 0) settings.Position = 0;
    if (settings.Position > highest) settings.Position = RoundToInteger(highest);
  }
}

}  // namespace orvalis
