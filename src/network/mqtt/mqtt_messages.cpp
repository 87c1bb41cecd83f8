#include "network/mqtt/mqtt_messages.h"

#include <array>
#include <nlohmann/json.hpp>

#include "network/mqtt/mqtt_client.h"

namespace orvalis::network {
namespace {

using Json = nlohmann::ordered_json;

/// One entity of the device in Home Assistant. What is "" is left out.
struct Component {
  std::string_view key;
  std::string_view name;
  std::string_view field;         ///< of the observation, as a template reads it
  std::string_view device_class;  ///< where there is one, the user chooses the unit
  std::string_view unit;
};
// Subscripts, not points: "values" is also a function of the template's object. A null becomes "None", which is
// unknown. A difference of temperatures has no class, because its conversion to Fahrenheit would add 32.
constexpr std::array<Component, 17> kSensors{{
    {"ambient", "Ambient temperature", "['values']['ambient_c']", "temperature", "°C"},
    {"sky", "Sky temperature", "['values']['sky_c']", "temperature", "°C"},
    {"difference", "Ambient minus sky", "['values']['difference_c']", "", "K"},
    {"dew_point", "Dew point", "['values']['dew_point_c']", "temperature", "°C"},
    {"humidity", "Humidity", "['values']['humidity_percent']", "humidity", "%"},
    {"wind", "Wind", "['values']['wind_m_s']", "wind_speed", "m/s"},
    {"wind_average", "Wind average", "['values']['wind_average_m_s']", "wind_speed", "m/s"},
    {"wind_gust", "Wind gust", "['values']['wind_gust_m_s']", "wind_speed", "m/s"},
    {"rain_counts", "Rain sensor", "['values']['rain_counts']", "", "counts"},
    {"light_counts", "Light sensor", "['values']['light_counts']", "", "counts"},
    {"cloud_cover", "Cloud cover", "['values']['cloud_cover_percent']", "", "%"},
    {"sky_word", "Sky", "['words']['sky']", "", ""},
    {"wind_word", "Wind condition", "['words']['wind']", "", ""},
    {"rain_word", "Rain", "['words']['rain']", "", ""},
    {"light_word", "Light", "['words']['light']", "", ""},
    {"source", "Source", "['source']", "", ""},
    {"reasons", "Unsafe because of", "['reasons'] | map(attribute='name') | join(', ') or '-'", "", ""},
}};

Json Entity(std::string_view platform, std::string_view key, std::string_view name, const Station& station) {
  return {{"p", platform},
          {"name", name},
          {"uniq_id", MqttNodeId(station) + "_" + std::string(key)},
          {"exp_aft", kMqttExpiry.count()}};
}

Json Sensor(const Component& component, const Station& station) {
  Json sensor = Entity("sensor", component.key, component.name, station);
  if (!component.device_class.empty()) sensor["dev_cla"] = component.device_class;
  if (!component.unit.empty()) {
    sensor["unit_of_meas"] = component.unit;
    sensor["stat_cla"] = "measurement";
  }
  sensor["val_tpl"] = "{{ value_json" + std::string(component.field) + " }}";
  return sensor;
}

std::string Line(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

}  // namespace

std::string AvailabilityJson(bool online, const Station& station) {
  return Line({{"state", online ? "online" : "offline"}, {"station", station.name}, {"uuid", station.uuid}});
}

std::optional<MqttAvailability> ReadAvailability(std::string_view payload) {
  const Json json = Json::parse(payload, nullptr, false);
  if (!json.is_object()) return std::nullopt;
  const auto state = json.find("state");
  const auto uuid = json.find("uuid");
  if (state == json.end() || uuid == json.end() || !uuid->is_string()) return std::nullopt;
  return MqttAvailability{.online = *state == "online", .uuid = uuid->get<std::string>()};
}

std::string VerdictMessageJson(const std::string& observation) {
  const Json all = Json::parse(observation);
  Json verdict;
  for (const char* field : {"time", "station", "uuid", "source", "age_s", "safe", "since", "hold_s", "reasons"}) {
    verdict[field] = all.at(field);
  }
  return Line(verdict);
}

std::string DiscoveryJson(const Station& station, const MqttTopics& topics) {
  Json components;
  Json unsafe = Entity("binary_sensor", "unsafe", "Unsafe", station);
  unsafe["dev_cla"] = "safety";
  unsafe["stat_t"] = topics.verdict;
  unsafe["val_tpl"] = "{{ 'OFF' if value_json is defined and value_json['safe'] is true else 'ON' }}";
  components["unsafe"] = std::move(unsafe);
  for (const Component& component : kSensors) components[component.key] = Sensor(component, station);
  return Line({{"dev",
                {{"ids", MqttNodeId(station)},
                 {"name", station.name},
                 {"mf", "Orvalis"},
                 {"mdl", "Weather sensor unit"},
                 {"sw", ORVALIS_VERSION}}},
               {"o", {{"name", "Orvalis"}, {"sw", ORVALIS_VERSION}}},
               {"avty_t", topics.availability},
               {"avty_tpl", "{{ value_json['state'] }}"},
               {"stat_t", topics.observation},
               {"cmps", std::move(components)}});
}

}  // namespace orvalis::network
