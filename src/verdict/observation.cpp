#include "verdict/observation.h"

#include <array>

namespace orvalis {
namespace {

constexpr std::array<ObservedValue, 13> kValues{{
    {"ambient_c", &ObservedValues::ambient_c},
    {"body_c", &ObservedValues::body_c},
    {"sky_c", &ObservedValues::sky_c},
    {"clear_sky_c", &ObservedValues::clear_sky_c},
    {"difference_c", &ObservedValues::difference_c},
    {"dew_point_c", &ObservedValues::dew_point_c},
    {"humidity_percent", &ObservedValues::humidity_percent},
    {"wind_m_s", &ObservedValues::wind_m_s},
    {"wind_average_m_s", &ObservedValues::wind_average_m_s},
    {"wind_gust_m_s", &ObservedValues::wind_gust_m_s},
    {"rain_counts", &ObservedValues::rain_counts},
    {"light_counts", &ObservedValues::light_counts},
    {"cloud_cover_percent", &ObservedValues::cloud_cover_percent},
}};

}  // namespace

std::string_view Name(ReadingSource source) {
  constexpr std::array<std::string_view, 3> kNames{"none", "unit", "demo"};
  return kNames[static_cast<std::size_t>(source)];
}

std::span<const ObservedValue> ObservedValueTable() { return kValues; }

}  // namespace orvalis
