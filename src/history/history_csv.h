#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>

#include "base/clock.h"
#include "history/history.h"
#include "history/sample.h"
#include "history/verdict_bands.h"
#include "history/verdict_history.h"
#include "reading/display_units.h"

namespace orvalis {

/// Converts milliseconds since 1970-01-01 UTC to local time.
using LocalTimeOf = std::function<CivilTime(std::int64_t time)>;

/// The measurements of `view` within `range` as comma-separated values with a header; docs/history.md describes the
/// columns. `quantities` are the numeric columns, temperatures in °C or, without `centigrade`, in °F, wind in mph.
[[nodiscard]] std::string HistoryCsv(const HistoryView& view, TimeRange range, std::span<const Quantity> quantities,
                                     bool centigrade, const LocalTimeOf& local_time);

/// The verdicts that were given within `range`, in the same way.
[[nodiscard]] std::string VerdictCsv(const VerdictHistory& verdicts, TimeRange range, const LocalTimeOf& local_time);

/// Whether `quantity` is a temperature, shown in °C or °F.
[[nodiscard]] bool IsTemperature(Quantity quantity);

/// The value to show: temperatures and wind in the units that a person has chosen.
[[nodiscard]] double ShownValue(Quantity quantity, double value, const DisplayUnits& units);

}  // namespace orvalis
