#pragma once

#include <cstdint>
#include <string_view>
#include <vector>

#include "history/history.h"
#include "history/sample.h"

namespace orvalis {

/// "clear", "partly cloudy", "cloudy", "rain", "unsafe"
[[nodiscard]] std::string_view Name(Condition condition);

/// Adds `band` after `bands`, or extends the last one if that ended at most `column_ms` before.
void AddBand(std::vector<TimeRange>& bands, TimeRange band, std::int64_t column_ms);

/// When `condition` held within `range`, for a picture `columns` wide: bands closer together than a column are merged.
/// A band of zero length is a single sample and must be drawn too.
[[nodiscard]] std::vector<TimeRange> ConditionBands(const History& history, Condition condition, TimeRange range,
                                                    int columns);

}  // namespace orvalis
