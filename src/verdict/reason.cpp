#include "verdict/reason.h"

#include <algorithm>
#include <string>

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

// As the names.
constexpr std::array<Phrase, kReasonCount> kInWords{
    Message::Of("no connection"), Message::Of("no reading"),
    Message::Of("stale"),         Message::Of("damaged reading"),
    Message::Of("demo"),          Message::Of("unit alarm"),
    Message::Of("rain"),          Message::Of("wind"),
    Message::Of("clouds"),        Message::Of("light"),
    Message::Of("relay off"),     Message::Of("settings pending"),
    Message::Of("settings lost"), Message::Of("unknown temperature"),
    Message::Of("forced"),        Message::Of("stopping"),
    Message::Of("hold"),
};

}  // namespace

std::string_view Name(Reason reason) { return kNames[static_cast<std::size_t>(reason)]; }

Message ReasonInWords(std::string_view name) {
  const auto found = std::ranges::find(kNames, name);
  if (found == kNames.end()) return std::string(name);
  return kInWords[static_cast<std::size_t>(found - kNames.begin())];
}

std::vector<std::string_view> NamesOf(ReasonSet reasons) {
  std::vector<std::string_view> names;
  reasons.ForEach([&](Reason reason) { names.push_back(Name(reason)); });
  return names;
}

}  // namespace orvalis
