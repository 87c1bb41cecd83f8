#pragma once

#include <cstdint>
#include <string>

#include "config/station.h"
#include "verdict/observation.h"

namespace orvalis::network {

/// The account of now on one line; docs/network.md describes the fields. What is unknown is null.
[[nodiscard]] std::string ObservationJson(const Observation& now, const Station& station);

/// Whether a roof may open, in the form that `indi_weather_safety_proxy` reads.
[[nodiscard]] std::string RoofStatusJson(const Observation& now);

/// "2026-11-21T20:04:05.250Z", from milliseconds since 1970-01-01 UTC.
[[nodiscard]] std::string UtcText(std::int64_t milliseconds);

}  // namespace orvalis::network
