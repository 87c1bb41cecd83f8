#pragma once

#include <string>
#include <string_view>

#include "config/station.h"

namespace orvalis::network {

/// `name` as one level of a topic: blanks, control characters, "/", "+", "#" and what is no UTF-8 become "_". At most
/// 100 characters of it; `otherwise` when nothing is left.
[[nodiscard]] std::string TopicLevel(std::string_view name, std::string_view otherwise);

/// Where a station's messages go.
struct MqttTopics {
  std::string availability;
  std::string observation;
  std::string verdict;
  std::string discovery;  ///< for Home Assistant; by the station's UUID, so that a rename does not change it

  [[nodiscard]] bool operator==(const MqttTopics& other) const = default;
};
/// `prefix` may have several levels.
[[nodiscard]] MqttTopics TopicsOf(std::string_view prefix, const Station& station);

/// Identifies the station to a broker and to Home Assistant: 23 letters and digits, which every broker takes.
[[nodiscard]] std::string MqttNodeId(const Station& station);

}  // namespace orvalis::network
