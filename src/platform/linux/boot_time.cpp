#include "platform/system/boot_time.h"

#include <ctime>

namespace orvalis {

std::int64_t MillisecondsSinceBoot() {
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  return static_cast<std::int64_t>(now.tv_sec) * 1000 + now.tv_nsec / 1'000'000;
}

}  // namespace orvalis
