#pragma once

#include <cstdint>

namespace orvalis {

/// Milliseconds since the system started, the time asleep included. Implemented once per operating system.
[[nodiscard]] std::int64_t MillisecondsSinceBoot();

}  // namespace orvalis
