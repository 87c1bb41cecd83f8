#pragma once

#include "base/clock.h"

namespace orvalis {

/// The system's clock and time zone.
class QtClock : public Clock {
 public:
  [[nodiscard]] CivilTime LocalNow() const override;
  [[nodiscard]] CivilTime UtcNow() const override;
  [[nodiscard]] CivilTime LocalAt(std::int64_t milliseconds) const override;
};

}  // namespace orvalis
