#include "platform/system/boot_time.h"

#include <windows.h>

namespace orvalis {

std::int64_t MillisecondsSinceBoot() { return static_cast<std::int64_t>(GetTickCount64()); }

}  // namespace orvalis
