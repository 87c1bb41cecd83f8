#pragma once

#include <chrono>

namespace orvalis {

/// A periodic timer. It ticks while it is enabled and its interval is above 0.
class IntervalTimer {
 public:
  virtual ~IntervalTimer() = default;
  virtual void SetInterval(std::chrono::milliseconds interval) = 0;
  virtual void SetEnabled(bool enabled) = 0;
};

}  // namespace orvalis
