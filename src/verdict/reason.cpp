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

}  // namespace orvalis
