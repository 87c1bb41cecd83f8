#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "base/colour.h"
#include "base/message.h"
#include "base/text.h"
#include "config/settings.h"
#include "reading/display_units.h"
#include "unit/unit_commands.h"
#include "verdict/observation.h"

namespace orvalis {

/// What stands in the setup dialog, as OK would take it.
struct TypedSetup {
  Settings settings;
  UnitOptions unit;
  bool unit_known = false;  ///< whether `unit` is that of a connected unit
  DisplayUnits units;
  NumberLocale locale;
};

/// A live value beside its limits, and what these would make of it.
struct LimitMeaning {
  std::string_view name;           ///< of the note in the dialog
  Message text;                    ///< "Now 10.8 mph: Breeze"
  Colour colour = Colour::kWhite;  ///< of the word or the alarm; white where nothing is known
};

inline constexpr std::size_t kLimitMeanings = 8;

/// For each note beside limits: what they would mean for the readings of `now`. Values are in the unit of their boxes
/// and, where the user has chosen another, in that too.
[[nodiscard]] std::array<LimitMeaning, kLimitMeanings> MeaningsNow(const TypedSetup& typed, const Observation& now);

}  // namespace orvalis
