#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "base/message.h"
#include "base/text.h"
#include "panel/sun.h"

namespace orvalis {

/// What the panel says of the sun.
struct SunText {
  std::string line;     ///< "Sun 23° below the horizon, dusk 18:05, dawn 05:58"
  std::string meaning;  ///< sunset and sunrise too, and what dusk and dawn are

  bool operator==(const SunText&) const = default;
};

/// The sun at `place` at `utc`, milliseconds since 1970-01-01. Times are local to the clock.
/// In `language`.
[[nodiscard]] SunText DescribeSun(const Place& place, std::int64_t utc, const Clock& clock,
                                  const Language& language = {});

/// The direction of a coordinate.
enum class Axis : std::uint8_t { kLatitude, kLongitude };

/// Reads a coordinate as people write it: "48.137", "-11,5", "11°34'30\" E", "48 08 14 N". Nothing when it is none, or
/// out of range: 90 degrees of latitude, 180 of longitude, north and east are positive.
[[nodiscard]] std::optional<double> ParseCoordinate(std::string_view text, Axis axis);

}  // namespace orvalis
