#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "history/history.h"
#include "history/sample.h"

namespace orvalis {

/// The history within `range` as comma-separated values with a header; docs/history.md describes the columns.
/// `quantities` are the numeric columns, temperatures in °C or, without `centigrade`, in °F. `local_time` converts
/// milliseconds since 1970-01-01 UTC to local time. `source` is repeated in every row: "unit" or "demo", as in the
/// output of the headless program.
[[nodiscard]] std::string HistoryCsv(const History& history, TimeRange range, std::span<const Quantity> quantities,
                                     bool centigrade, std::string_view source,
                                     const std::function<CivilTime(std::int64_t)>& local_time);

/// Whether `quantity` is a temperature, shown in °C or °F.
[[nodiscard]] bool IsTemperature(Quantity quantity);

/// The value to show: temperatures in °C or °F.
[[nodiscard]] double ShownValue(Quantity quantity, double value, bool centigrade);

}  // namespace orvalis
