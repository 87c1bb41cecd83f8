#pragma once

#include <array>
#include <cstddef>

#include "config/settings.h"
#include "history/curve.h"
#include "history/sample.h"

namespace orvalis {

/// Where the panel's word for a quantity changes.
struct WordLimit {
  Quantity quantity = Quantity::kSky;
  const char* text = "";       ///< "windy above"
  double value = 0;            ///< in the quantity's unit
  bool under_ambient = false;  ///< the limit is so much below the ambient temperature

  bool operator==(const WordLimit&) const = default;
};
inline constexpr std::size_t kWordLimits = 8;
using WordLimits = std::array<WordLimit, kWordLimits>;

/// By the settings: the two limits of sky, wind, rain and light.
[[nodiscard]] WordLimits WordLimitsOf(const Settings& settings);

/// The value of `limit` within a span; nothing where the ambient temperature that it goes by is unknown.
[[nodiscard]] CurveValue ValueOf(const WordLimit& limit);

}  // namespace orvalis
