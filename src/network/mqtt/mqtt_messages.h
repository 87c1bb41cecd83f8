#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "config/station.h"
#include "network/mqtt/mqtt_topics.h"
#include "verdict/observation.h"

namespace orvalis::network {

// The payloads; docs/mqtt.md describes them.

/// Whether a station is there, and whose word that is.
struct MqttAvailability {
  bool online = false;
  std::string uuid;
};
[[nodiscard]] std::string AvailabilityJson(bool online, const Station& station);
/// Nothing for what is no such payload.
[[nodiscard]] std::optional<MqttAvailability> ReadAvailability(std::string_view payload);

/// The verdict of `observation`, a payload made by `ObservationJson`, without the values.
[[nodiscard]] std::string VerdictMessageJson(const std::string& observation);

/// What makes Home Assistant show the station as one device with its verdict and its values. An unknown value is shown
/// as unknown, a silent program as unavailable; of the verdict, only an explicit "safe" is off.
[[nodiscard]] std::string DiscoveryJson(const Station& station, const MqttTopics& topics);

}  // namespace orvalis::network
