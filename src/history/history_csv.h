#pragma once

#include <functional>
#include <span>
#include <string>
#include <string_view>

#include "base/clock.h"
#include "history/history.h"
#include "history/sample.h"

namespace orvalis {

/// What was kept within `range`, as comma-separated values with a header; docs/history.md describes the columns.
/// `quantities` are the columns of numbers, temperatures in °C or, without `centigrade`, in °F. `local_time` gives the
/// civil time of a moment in milliseconds since 1970-01-01 UTC. `source` stands in every row: where the values come
/// from, "unit" or "demo", as in the lines of the headless program.
[[nodiscard]] std::string HistoryCsv(const History& history, TimeRange range, std::span<const Quantity> quantities,
                                     bool centigrade, std::string_view source,
                                     const std::function<CivilTime(std::int64_t)>& local_time);

/// Whether `quantity` is a temperature and follows the choice of °C or °F.
[[nodiscard]] bool IsTemperature(Quantity quantity);

/// The number as it is shown: temperatures in °C or °F.
[[nodiscard]] double ShownValue(Quantity quantity, double value, bool centigrade);

}  // namespace orvalis
