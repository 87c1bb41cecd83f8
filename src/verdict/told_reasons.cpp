#include "verdict/told_reasons.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

#include "base/recognized.h"

namespace orvalis {
namespace {

// Where one text begins as another does, the longer one first.
constexpr std::array<Phrase, 32> kTold{
    Message::Of("unit's alarm: %1"),
    Message::Of("%1; the unit stays on for %2 s after rain, %3 left"),
    Message::Of("%1; the unit stays on for %2 s after rain"),
    Message::Of("%1; the alarm ends at %2"),
    Message::Of("rain %1 counts, limit %2"),
    Message::Of("damp, %1 counts, limit %2"),
    Message::Of("wind %1 counts, limit %2"),
    Message::Of("wind %1, limit %2"),
    Message::Of("light %1 counts, limit %2 (fewer is brighter)"),
    Message::Of("clouds: sky %1, limit %2"),
    Message::Of("cloudy: the sky is %1 colder than the air, limit %2"),
    Message::Of("daylight: light %1 counts"),
    Message::Of("the unit's relay is on; none of the readings explains it"),
    Message::Of("the unit's relay is forced, so it says nothing about the sky"),
    Message::Of("the unit's relay is switched off, so it says nothing about the sky"),
    Message::Of("not connected to the unit"),
    Message::Of("no reading from the unit yet"),
    Message::Of("no reading for long"),
    Message::Of("no reading for %1"),
    Message::Of("the unit's readings arrive damaged"),
    Message::Of("demo mode: the values are simulated"),
    Message::Of("not all settings have been sent to the unit yet"),
    Message::Of("the settings were restored or reset, and nobody has acknowledged that"),
    Message::Of("the ambient temperature is unknown, and so are the clouds"),
    Message::Of("a test, %1 left"),
    Message::Of("forced by hand"),
    Message::Of("Orvalis is ending"),
    Message::Of("safe after another good reading"),
    Message::Of("safe in %1 if nothing else comes up"),
    Message::Of("%1 days"),
    Message::Of("%1 h"),
    Message::Of("%1 min"),
};

/// "350", "-5.0 C", "12,4 km/h": a number, and a unit that is the same in every language.
bool IsFigure(std::string_view text) {
  const std::size_t unit = text.find(' ');
  const std::string_view number = text.substr(0, unit);
  if (number.empty() || number.find_first_not_of("-0123456789.,") != std::string_view::npos) return false;
  constexpr std::array<std::string_view, 7> kUnits{"C", "F", "s", "mph", "km/h", "m/s", "kn"};
  return unit == std::string_view::npos || std::ranges::find(kUnits, text.substr(unit + 1)) != kUnits.end();
}

/// Reads one text. It is tried in many ways, and one that was damaged could be in more than there is time for.
class Reader {
 public:
  [[nodiscard]] std::optional<Message> Known(std::string_view text) {
    if (IsFigure(text)) return std::string(text);
    if (attempts_left_-- <= 0) return std::nullopt;
    for (const Phrase& told : kTold) {
      const auto part = [this](std::string_view inner) { return Known(inner); };
      if (std::optional<Message> message = Recognized(text, told, part)) return message;
    }
    // Reasons end with a full stop, the causes of an alarm with a semicolon. Both can stand within a text too.
    for (const std::string_view separator : {". ", "; "}) {
      for (std::size_t at = text.find(separator); at != std::string_view::npos; at = text.find(separator, at + 1)) {
        const std::optional<Message> first = Known(text.substr(0, at));
        if (!first) continue;
        const std::optional<Message> rest = Known(text.substr(at + separator.size()));
        if (rest) return Joined(*first, separator, *rest);
      }
    }
    return std::nullopt;
  }

 private:
  int attempts_left_ = 1'000;
};

}  // namespace

Message ToldReasons(std::string_view english) {
  const std::optional<Message> known = Reader().Known(english);
  return known ? *known : Message(std::string(english));
}

}  // namespace orvalis
