#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "base/clock.h"
#include "base/message.h"
#include "base/text.h"
#include "reading/display_units.h"
#include "verdict/observation.h"

namespace orvalis {

/// The verdict as the panel shows it, in the language of its windows.
struct VerdictBanner {
  enum class State : std::uint8_t {
    kSafe,      ///< without any condition
    kSafeDemo,  ///< safe by simulated values, which the settings allow
    kSafeSoon,  ///< unsafe; no reason is left, but not yet for long enough
    kUnsafe,
  };
  State state = State::kUnsafe;
  std::string text = "UNSAFE";            ///< as one line: "UNSAFE - rain, limit 350 passed at 21:04", "SAFE in 8 s"
  std::string word = "UNSAFE";            ///< the part of it to be read from a distance: "UNSAFE", "SAFE in 8 s"
  std::string reason;                     ///< the rest: "rain, limit 350 passed at 21:04"
  std::string since;                      ///< how long it has been so, and what else is to be known
  std::vector<std::string> explanations;  ///< of every reason, with figures
  bool forced = false;                    ///< a person wants it unsafe
  bool testing = false;                   ///< a person tries out what happens when it is unsafe

  [[nodiscard]] bool operator==(const VerdictBanner& other) const = default;
};

/// The banner for `now` in `language`. Times are local, with their date unless that is the day of `now`.
[[nodiscard]] VerdictBanner BannerOf(const Observation& now, const Clock& clock, NumberLocale locale,
                                     const DisplayUnits& units = {}, const Language& language = {});

}  // namespace orvalis
