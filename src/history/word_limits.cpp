#include "history/word_limits.h"

#include <optional>

#include "base/message.h"
#include "reading/conditions.h"

namespace orvalis {

WordLimits WordLimitsOf(const Settings& settings) {
  using enum Quantity;
  return {{{kSky, Message::Of("cloudy above").english(), static_cast<double>(settings.FullCloudyDegC), true},
           {kSky, Message::Of("clear below").english(), static_cast<double>(settings.PartCloudyDegC), true},
           {kWind, Message::Of("windy above").english(), settings.WindSpeedCloseD},
           {kWind, Message::Of("breeze above").english(), settings.WindSpeedWarn},
           {kRain, Message::Of("rain above").english(), static_cast<double>(settings.RainThreshold) + kDampBand},
           {kRain, Message::Of("damp above").english(), static_cast<double>(settings.RainThreshold)},
           {kLight, Message::Of("dark above").english(), static_cast<double>(settings.LightThreshold)},
           {kLight, Message::Of("dusk above").english(), static_cast<double>(kDuskAbove)}}};
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
