#pragma once

#include "base/tick_counter.h"
#include "reading/sensor_frame.h"

namespace orvalis {

/// The frames of demo mode: the dry and the wet line in turn, each for 15 poll ticks. It starts on the dry line, and
/// the first switch sets the dry line once more.
class DemoFeed {
 public:
  static constexpr std::int16_t kTicksPerLine = 15;

  /// The frame that is due. `ticks` counts since the last switch and is set to 0 by one.
  const SensorFrame& Next(TickCounter& ticks) {
    if (ticks.ticks() >= kTicksPerLine) {
      ticks.Reset();
      frame_ = SensorFrame(last_set_dry_ ? kWetDemoLine : kDryDemoLine);
      last_set_dry_ = !last_set_dry_;
    }
    return frame_;
  }

 private:
  SensorFrame frame_{kDryDemoLine};
  bool last_set_dry_ = false;  ///< by a switch
};

}  // namespace orvalis
