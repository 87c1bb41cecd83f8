#include "reading/display_units.h"

#include <algorithm>
#include <cstddef>

namespace orvalis {
namespace {

struct Row {
  std::string_view name;
  double of_one_mph;
};
// In the order of WindUnit. A mile is 1609.344 m, a nautical mile 1852 m.
constexpr std::array<Row, kWindUnits.size()> kRows{
    {{"mph", 1}, {"km/h", 1.609344}, {"m/s", 0.44704}, {"kn", 1609.344 / 1852}}};

struct Custom {
  std::string_view territories;  ///< separated by blanks
  DisplayUnits units;
};
/// As the Unicode locale data has it for temperatures and wind in weather reports; km/h and °C elsewhere.
constexpr std::array kCustoms{
    Custom{"US PR BS BZ KY PW", {.centigrade = false, .wind = WindUnit::kMilesPerHour}},
    Custom{"GB", {.centigrade = true, .wind = WindUnit::kMilesPerHour}},
    Custom{"CN CZ DK EE FI IS JP KR LT LV NO RU SE", {.centigrade = true, .wind = WindUnit::kMetresPerSecond}}};

const Row& RowOf(WindUnit unit) { return kRows[static_cast<std::size_t>(unit)]; }

}  // namespace

std::string_view Name(WindUnit unit) { return RowOf(unit).name; }

double FromMph(double mph, WindUnit unit) { return mph * RowOf(unit).of_one_mph; }

DisplayUnits UnitsOf(const Settings& settings) {
  const std::int32_t last = static_cast<std::int32_t>(kWindUnits.size()) - 1;
  return {.centigrade = settings.Centigrade,
          .wind = static_cast<WindUnit>(std::clamp(settings.WindUnit, std::int32_t{0}, last))};
}

DisplayUnits UsualUnits(std::string_view territory) {
  constexpr std::size_t kCodeLength = 2;
  for (const Custom& custom : kCustoms) {
    for (std::size_t at = 0; at < custom.territories.size(); at += kCodeLength + 1) {
      if (custom.territories.substr(at, kCodeLength) == territory) return custom.units;
    }
  }
  return {.centigrade = true, .wind = WindUnit::kKilometresPerHour};
}

}  // namespace orvalis
