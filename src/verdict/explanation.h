#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>

#include "base/message.h"
#include "base/text.h"
#include "reading/display_units.h"
#include "verdict/observation.h"

namespace orvalis {

// The verdict in words, for people. Programs read the names of the reasons, and show the texts in the default units.

/// One reason with its figures: "rain 412 counts, limit 350; the unit stays on for 60 s after rain".
[[nodiscard]] Message Explain(Reason reason, const Observation& observation, NumberLocale locale = {},
                              const DisplayUnits& units = {});
/// All reasons in English, one sentence each. "" when it is safe.
[[nodiscard]] std::string Explain(const Observation& observation);
/// The names of the reasons: "rain, wind". "" when it is safe.
[[nodiscard]] std::string ReasonNames(const SafetyVerdict& verdict);

/// Formats a wall-clock time, ms since 1970-01-01 UTC, as the time of day.
using TimeOfDay = std::function<std::string(std::int64_t utc)>;
/// The first reason in short, with the time since when it applies where that matters: "rain, limit 350 passed at
/// 21:04". "in 8 s" during a hold; "" when it is safe.
[[nodiscard]] Message FirstReason(const Observation& observation, const TimeOfDay& time_of_day);
/// One line for a panel: "SAFE", "SAFE in 8 s", "UNSAFE - rain, limit 350 passed at 21:04".
[[nodiscard]] Message Banner(const Observation& observation, const TimeOfDay& time_of_day);

/// "42 s", "2 min", "3 h", "4 days": the largest unit that fits, rounded down.
[[nodiscard]] Message RoughTime(std::chrono::milliseconds time);

}  // namespace orvalis
