// After the low-precision position of the sun in the astronomical almanacs: mean elements and the equation of the
// centre, without perturbations. The clock's UTC serves for every scale of time; the difference moves the sun by less
// than a thousandth of a degree.

#include "panel/sun.h"

#include <cmath>
#include <numbers>

namespace orvalis {
namespace {

constexpr double kMsPerDay = 86'400'000;
constexpr double kJ2000 = 946'728'000'000;  ///< 2000-01-01 12:00, in milliseconds since 1970-01-01
/// How far the Earth turns below the stars in a day, in degrees.
constexpr double kTurnPerDay = 360.98564736629;
/// How far it turns below the sun.
constexpr double kSunTurnPerDay = 360;

double Radians(double degrees) { return degrees * std::numbers::pi / 180; }
double Degrees(double radians) { return radians * 180 / std::numbers::pi; }

struct Position {
  double declination;  ///< radians
  double hour_angle;   ///< degrees west of the meridian, -180 to 180
};

Position SunAt(const Place& place, double utc) {
  const double days = (utc - kJ2000) / kMsPerDay;
  const double centuries = days / 36525;
  const double mean_longitude = 280.46646 + 36000.76983 * centuries;
  const double anomaly = Radians(357.52911 + 35999.05029 * centuries);
  const double centre = (1.914602 - 0.004817 * centuries) * std::sin(anomaly) + 0.019993 * std::sin(2 * anomaly) +
                        0.000289 * std::sin(3 * anomaly);
  const double node = Radians(125.04 - 1934.136 * centuries);
  // Apparent: with aberration and the larger part of the nutation.
  const double longitude = Radians(mean_longitude + centre - 0.00569 - 0.00478 * std::sin(node));
  const double obliquity = Radians(23.439291 - 0.0130042 * centuries + 0.00256 * std::cos(node));
  const double ascension = Degrees(std::atan2(std::cos(obliquity) * std::sin(longitude), std::cos(longitude)));
  const double sidereal = 280.46061837 + kTurnPerDay * days + place.longitude;
  return {.declination = std::asin(std::sin(obliquity) * std::sin(longitude)),
          .hour_angle = std::remainder(sidereal - ascension, 360.0)};
}

double AltitudeAt(const Place& place, double utc) {
  const Position sun = SunAt(place, utc);
  const double latitude = Radians(place.latitude);
  return Degrees(std::asin(std::sin(latitude) * std::sin(sun.declination) +
                           std::cos(latitude) * std::cos(sun.declination) * std::cos(Radians(sun.hour_angle))));
}

/// The noon nearest to `utc`.
double NoonNear(const Place& place, double utc) {
  constexpr int kSteps = 3;  // each leaves a few thousandths of the error
  for (int step = 0; step < kSteps; ++step) utc -= SunAt(place, utc).hour_angle / kSunTurnPerDay * kMsPerDay;
  return utc;
}

/// When the sun passes `altitude` between `high` and `low`, a noon and a midnight in either order.
std::optional<std::int64_t> Crossing(const Place& place, double altitude, double high, double low) {
  if (AltitudeAt(place, high) < altitude || AltitudeAt(place, low) > altitude) return std::nullopt;
  constexpr double kCloseEnough = 100;  // milliseconds
  while (std::abs(low - high) > kCloseEnough) {
    const double middle = (high + low) / 2;
    (AltitudeAt(place, middle) > altitude ? high : low) = middle;
  }
  return std::llround(high);
}

Night NightFrom(const Place& place, double noon) {
  const double next = NoonNear(place, noon + kMsPerDay);
  const double midnight = (noon + next) / 2;
  return {.begin = std::llround(noon),
          .end = std::llround(next),
          .sunset = Crossing(place, kHorizonDegrees, noon, midnight),
          .dusk = Crossing(place, kDarkDegrees, noon, midnight),
          .dawn = Crossing(place, kDarkDegrees, next, midnight),
          .sunrise = Crossing(place, kHorizonDegrees, next, midnight)};
}

}  // namespace

double SunAltitude(const Place& place, std::int64_t utc) { return AltitudeAt(place, static_cast<double>(utc)); }

Night NightAt(const Place& place, std::int64_t utc) {
  const auto now = static_cast<double>(utc);
  double noon = NoonNear(place, now);
  if (noon > now) noon = NoonNear(place, noon - kMsPerDay);
  Night night = NightFrom(place, noon);
  const std::optional<std::int64_t> over = night.sunrise ? night.sunrise : night.dawn;
  return over && *over < utc ? NightFrom(place, static_cast<double>(night.end)) : night;
}

}  // namespace orvalis
