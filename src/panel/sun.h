#pragma once

#include <cstdint>
#include <optional>

namespace orvalis {

/// A place on the Earth, in degrees.
struct Place {
  double latitude = 0;   ///< -90 to 90, north is positive
  double longitude = 0;  ///< -180 to 180, east is positive
  bool operator==(const Place&) const = default;
};

/// The altitude of the sun's centre in degrees, without refraction, at `utc` (milliseconds since 1970-01-01): within a
/// hundredth of a degree between 1950 and 2050.
[[nodiscard]] double SunAltitude(const Place& place, std::int64_t utc);

/// The sun rises and sets when its centre is here: its radius and the usual refraction.
inline constexpr double kHorizonDegrees = -0.833;
/// Astronomical dusk and dawn: the sky gets no darker below it.
inline constexpr double kDarkDegrees = -18.0;

/// From one noon of the sun to the next. Times are milliseconds since 1970-01-01 UTC, none where the sun does not reach
/// that altitude.
struct Night {
  std::int64_t begin = 0;  ///< the noon before
  std::int64_t end = 0;    ///< the noon after
  std::optional<std::int64_t> sunset;
  std::optional<std::int64_t> dusk;
  std::optional<std::int64_t> dawn;
  std::optional<std::int64_t> sunrise;
};

/// The night that is, or that comes next once the sun has risen.
[[nodiscard]] Night NightAt(const Place& place, std::int64_t utc);

}  // namespace orvalis
