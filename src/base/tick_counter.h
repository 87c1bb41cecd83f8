#pragma once

#include <cstdint>
#include <limits>

#include "base/run_time_error.h"

namespace orvalis {

/// A 16-bit count of poll ticks. A counter for an interval stops at the interval, so that an outage of weeks does not
/// overflow it and the work is due as soon as it is possible.
class TickCounter {
 public:
  /// Adds one tick. Throws RunTimeError kOverflow beyond 32767.
  void Raise() {
    if (ticks_ == std::numeric_limits<std::int16_t>::max()) {
      throw RunTimeError(RunTimeError::kOverflow, "a tick counter passed 32767");
    }
    ++ticks_;
  }

  /// Adds one tick, up to `limit`.
  void RaiseUpTo(std::int16_t limit) {
    if (ticks_ < limit) Raise();
  }

  void Reset() { ticks_ = 0; }
  [[nodiscard]] std::int16_t ticks() const { return ticks_; }

 private:
  std::int16_t ticks_ = 0;
};

}  // namespace orvalis
