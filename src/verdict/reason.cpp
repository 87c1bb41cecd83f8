#include "verdict/reason.h"

namespace orvalis {
namespace {

// In the order of Reason.
constexpr std::array<std::string_view, kReasonCount> kNames{
    "no_connection", "no_reading",
    "stale",         "damaged_reading",
    "demo",          "unit_alarm",
    "rain",          "wind",
    "clouds",        "light",
    "relay_off",     "settings_pending",
    "settings_lost", "unknown_temperature",
    "forced",        "stopping",
    "hold",
};

}  // namespace

std::string_view Name(Reason reason) { return kNames[static_cast<std::size_t>(reason)]; }

std::vector<std::string_view> NamesOf(ReasonSet reasons) {
  std::vector<std::string_view> names;
  reasons.ForEach([&](Reason reason) { names.push_back(Name(reason)); });
  return names;
}

}  // namespace orvalis
