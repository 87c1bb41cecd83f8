#include "history/word_limits.h"

#include <optional>

#include "reading/conditions.h"

namespace orvalis {

WordLimits WordLimitsOf(const Settings& settings) {
  using enum Quantity;
  return {{{kSky, "cloudy above", static_cast<double>(settings.FullCloudyDegC), true},
           {kSky, "clear below", static_cast<double>(settings.PartCloudyDegC), true},
           {kWind, "windy above", settings.WindSpeedCloseD},
           {kWind, "breeze above", settings.WindSpeedWarn},
           {kRain, "rain above", static_cast<double>(settings.RainThreshold) + kDampBand},
           {kRain, "damp above", static_cast<double>(settings.RainThreshold)},
           {kLight, "dark above", static_cast<double>(settings.LightThreshold)},
           {kLight, "dusk above", static_cast<double>(kDuskAbove)}}};
}

CurveValue ValueOf(const WordLimit& limit) {
  return [limit](const Span& span) -> std::optional<ValueLimits> {
    double value = limit.value;
    if (limit.under_ambient) {
      if (!span.lowest.Knows(Quantity::kAmbient)) return std::nullopt;
      value = (span.lowest[Quantity::kAmbient] + span.highest[Quantity::kAmbient]) / 2 - limit.value;
    }
    return ValueLimits{.lowest = value, .highest = value};
  };
}

}  // namespace orvalis
