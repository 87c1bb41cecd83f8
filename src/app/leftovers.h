#pragma once

#include "config/settings.h"

namespace orvalis {

/// Leftovers of the focuser template: its compensation indicators and the clamp of its position. They do not affect the
/// weather.
struct Leftovers {
  bool temperature_compensation = true;
  bool second_indicator = true;
  int compensation_state = 0;  ///< 2 unavailable, 1 on, 0 off
  int second_state = 0;        ///< 1 on, 0 off

  /// Call after the settings were loaded or changed.
  void Refresh(Settings& settings);
};

}  // namespace orvalis
