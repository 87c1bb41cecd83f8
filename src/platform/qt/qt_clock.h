#pragma once

#include "base/clock.h"

namespace orvalis {

/// The system's clock, time zone and time formats.
class QtClock : public Clock {
 public:
  QtClock();
  [[nodiscard]] CivilTime LocalNow() const override;
  [[nodiscard]] CivilTime UtcNow() const override;
  [[nodiscard]] CivilTime LocalAt(std::int64_t milliseconds) const override;
};

}  // namespace orvalis
