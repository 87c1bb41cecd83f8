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
constexpr std::array<Message::Text, kReasonCount> kInWords{
    Message::Text("no connection"), Message::Text("no reading"),
    Message::Text("stale"),         Message::Text("damaged reading"),
    Message::Text("demo"),          Message::Text("unit alarm"),
    Message::Text("rain"),          Message::Text("wind"),
    Message::Text("clouds"),        Message::Text("light"),
    Message::Text("relay off"),     Message::Text("settings pending"),
    Message::Text("settings lost"), Message::Text("unknown temperature"),
    Message::Text("forced"),        Message::Text("stopping"),
    Message::Text("hold"),
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
