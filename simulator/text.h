#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalis_unit {

// Time since the simulator started, on a clock that only moves forward.
using Time = std::chrono::nanoseconds;

// The whole text as a plain decimal number ("-5", "10.25"); nothing when any of it is something else, or not finite.
std::optional<double> ParseNumber(std::string_view text);

// A time in seconds, from "H:MM", "H:MM:SS" or a number of seconds; nothing when negative or malformed.
std::optional<double> ParseTime(std::string_view text);

// A length of time given as a number of seconds, from 0 to about 30 years (so that it fits a Time everywhere).
std::optional<double> ParseSeconds(std::string_view text);

// "H:MM:SS", cut to whole seconds.
std::string TimeText(double seconds);

// A number as short as it reads back the same: "350", "-0.5".
std::string NumberText(double value);

// The bytes between double quotes; quotes and backslashes escaped, everything outside printable ASCII as \xHH.
std::string Quoted(std::string_view bytes);

// The parts between blanks and tabs; '\r' counts as a blank, so that files with either line end are read.
std::vector<std::string_view> Words(std::string_view line);

// Rounds to the nearest nanosecond.
Time FromSeconds(double seconds);

double ToSeconds(Time time);

}  // namespace orvalis_unit
