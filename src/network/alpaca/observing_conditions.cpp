#include "network/alpaca/observing_conditions.h"

#include <algorithm>
#include <string>
#include <utility>

namespace orvalis::network {
namespace {

using Value = ObservedValues::Value;

Value Humidity(const Observation& now) {
  const Value humidity = now.values.humidity_percent;
  return humidity ? Value(std::clamp(*humidity, 0.0, 100.0)) : humidity;
}

/// The unit tells only whether it is wet. These count as light rain everywhere.
Value RainRate(const Observation& now) {
  if (now.words.rain.empty()) return std::nullopt;
  if (now.words.rain == "Dry") return 0.0;
  return now.words.rain == "Damp" ? 0.1 : 1.0;
}

/// Wind and gust are not below 0, whatever a gust starts from.
Value NotNegative(Value value) { return value ? Value(std::max(*value, 0.0)) : value; }

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(),
                         [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return lower;
}

}  // namespace

/// One value of the interface. Without `read` it is not fitted.
struct ObservingConditions::Sensor {
  std::string_view name;
  Value (*read)(const Observation& now) = nullptr;
  std::string_view description = {};
};

const std::array<ObservingConditions::Sensor, ObservingConditions::kSensors> ObservingConditions::kTable{{
    {"CloudCover", [](const Observation& now) { return now.values.cloud_cover_percent; },
     "Percent, in steps: 0 clear, 50 partly cloudy, 100 cloudy; from the sky's temperature below the air's"},
    {"DewPoint", [](const Observation& now) { return now.values.dew_point_c; },
     "Degrees Celsius, from temperature and humidity"},
    {"Humidity", Humidity, "Relative humidity in percent"},
    {"Pressure"},
    {"RainRate", RainRate, "0 dry, 0.1 damp, 1 rain: the sensor tells whether it is wet, not how much it rains"},
    {"SkyBrightness"},
    {"SkyQuality"},
    {"SkyTemperature", [](const Observation& now) { return now.values.sky_c; },
     "Degrees Celsius, measured by an infrared sensor that looks up"},
    {"StarFWHM"},
    {"Temperature", [](const Observation& now) { return now.values.ambient_c; }, "Degrees Celsius, ambient"},
    {"WindDirection"},
    {"WindGust", [](const Observation& now) { return NotNegative(now.values.wind_gust_m_s); },
     "Metres per second, the highest of the last minutes"},
    {"WindSpeed", [](const Observation& now) { return NotNegative(now.values.wind_m_s); }, "Metres per second"},
}};

ObservingConditions::ObservingConditions(Parts parts)
    : AlpacaDevice(std::move(parts), {.type = "ObservingConditions",
                                      .name = "",
                                      .description = "Orvalis: temperature, humidity, clouds, rain and wind",
                                      .unique_id = "",
                                      .interface_version = 2}) {}

std::vector<AlpacaMember> ObservingConditions::OwnMembers() {
  using Call = const AlpacaCall&;
  std::vector<AlpacaMember> members{
      {"averageperiod", Method::kGet, 0.0,
       [this](Call call) {
         CheckConnected(call);
         return 0.0;
       },
       "0: the readings of now"},
      {"averageperiod", Method::kPut, nullptr, [this](Call call) { return SetAveragePeriod(call); },
       "takes 0 alone: AveragePeriod"},
      {"refresh", Method::kPut, nullptr,
       [](Call) -> Json {
         throw AlpacaError(AlpacaError::kNotImplemented, "The sensors are read every two seconds anyway");
       },
       "not available: the sensors are read every two seconds"},
      {"sensordescription", Method::kGet, "", [this](Call call) { return Describe(call); },
       "what a sensor is: SensorName"},
      {"timesincelastupdate", Method::kGet, 0.0, [this](Call call) { return TimeSinceUpdate(call); },
       "seconds since a sensor was read: SensorName, empty for the latest of all"},
  };
  for (const Sensor& sensor : kTable) {
    members.push_back({LowerCase(sensor.name), Method::kGet, 0.0,
                       [this, &sensor](Call call) { return Read(sensor, call); },
                       std::string(sensor.read != nullptr ? sensor.description : "not fitted")});
  }
  return members;
}

void ObservingConditions::CheckConnected(const AlpacaCall& call) {
  if (call.client() == 0 || IsConnected(call)) return;
  throw AlpacaError(AlpacaError::kNotConnected, "This client has not connected");
}

Json ObservingConditions::Read(const Sensor& sensor, const AlpacaCall& call) {
  if (sensor.read == nullptr) {
    throw AlpacaError(AlpacaError::kNotImplemented, "There is no sensor for " + std::string(sensor.name));
  }
  CheckConnected(call);
  const Value value = sensor.read(Now());
  if (value) return *value;
  throw AlpacaError(AlpacaError::kInvalidOperation, std::string(sensor.name) + " is not known now");
}

Json ObservingConditions::SetAveragePeriod(const AlpacaCall& call) {
  if (call.Number("AveragePeriod") != 0) {
    throw AlpacaError(AlpacaError::kInvalidValue, "The average period can only be 0: the readings of now");
  }
  CheckConnected(call);
  return nullptr;
}

std::size_t ObservingConditions::SensorOf(const AlpacaCall& call) {
  const std::string_view name = call.Text("SensorName");
  const auto* const found =
      std::ranges::find_if(kTable, [&](const Sensor& sensor) { return SameIgnoringCase(sensor.name, name); });
  if (found == kTable.end()) throw AlpacaError(AlpacaError::kInvalidValue, "There is no sensor of that name");
  if (found->read == nullptr) {
    throw AlpacaError(AlpacaError::kNotImplemented, "There is no sensor for " + std::string(found->name));
  }
  return static_cast<std::size_t>(found - kTable.begin());
}

Json ObservingConditions::Describe(const AlpacaCall& call) const { return kTable.at(SensorOf(call)).description; }

void ObservingConditions::Note(const Observation& now) {
  if (!now.age) return;
  const std::int64_t read_at = Tick() - now.age->count();
  for (std::size_t i = 0; i < kSensors; ++i) {
    const Sensor& sensor = kTable.at(i);
    if (sensor.read != nullptr && sensor.read(now)) known_at_.at(i) = read_at;
  }
}

Json ObservingConditions::TimeSinceUpdate(const AlpacaCall& call) {
  Note(Now());
  // The latest of all, or the one that is named.
  const std::optional<std::int64_t> known_at =
      call.Text("SensorName").empty() ? *std::ranges::max_element(known_at_) : known_at_.at(SensorOf(call));
  CheckConnected(call);
  constexpr double kNever = -1.0;
  return known_at ? static_cast<double>(Tick() - *known_at) / 1'000.0 : kNever;
}

Json ObservingConditions::State(const AlpacaCall& call) {
  CheckConnected(call);
  const Observation& now = Now();
  Json state = Json::array();
  for (const Sensor& sensor : kTable) {
    if (sensor.read == nullptr) continue;
    if (const Value value = sensor.read(now)) state.push_back(StateEntry(sensor.name, *value));
  }
  if (!state.empty() && now.age) state.push_back(TimeEntry(now.time - now.age->count()));
  return state;
}

}  // namespace orvalis::network
