#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "verdict/observation.h"

namespace orvalis {

/// What an alert's program finds in its environment.
struct AlertFact {
  std::string name;                  ///< "ORVALIS_RAIN_COUNTS"
  std::optional<std::string> value;  ///< none where it is not known: the variable does not exist then
};
using AlertFacts = std::vector<AlertFact>;

/// ORVALIS_ALERT and ORVALIS_TEST.
[[nodiscard]] AlertFacts FactsOfAlert(std::string_view alert, bool test);
/// These, the verdict with its reasons and its age, and each value.
[[nodiscard]] AlertFacts FactsOfAlert(std::string_view alert, bool test, const Observation& now);

}  // namespace orvalis
