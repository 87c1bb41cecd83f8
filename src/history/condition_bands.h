#pragma once

#include <string_view>
#include <vector>

#include "history/history.h"
#include "history/sample.h"

namespace orvalis {

/// "clear", "partly cloudy", "cloudy", "rain", "unsafe"
[[nodiscard]] std::string_view Name(Condition condition);

/// When `condition` held within `range`, for a picture that is `columns` wide: bands that are closer together than a
/// column are one. A band without length is a single sample, and has to be drawn all the same.
[[nodiscard]] std::vector<TimeRange> ConditionBands(const History& history, Condition condition, TimeRange range,
                                                    int columns);

}  // namespace orvalis
