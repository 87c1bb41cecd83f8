#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace orvalis_unit {

// Time since the simulator started, on a clock that only moves forward.
using Time = std::chrono::nanoseconds;

// The entire text as a plain decimal number ("-5", "10.25"); nothing if it is anything else or not finite.
std::optional<double> ParseNumber(std::string_view text);

// A time in seconds, from "H:MM", "H:MM:SS" or a number of seconds; nothing when negative or malformed.
std::optional<double> ParseTime(std::string_view text);

// A duration in seconds, from 0 to about 30 years (so that it fits a Time).
std::optional<double> ParseSeconds(std::string_view text);

// "H:MM:SS", truncated to seconds.
std::string TimeText(double seconds);

// The shortest text that reads back as the same number: "350", "-0.5".
std::string NumberText(double value);

// The bytes in double quotes; quotes and backslashes escaped, everything outside printable ASCII as \xHH.
std::string Quoted(std::string_view bytes);

// The words separated by blanks and tabs; '\r' counts as a blank, so that either line end works.
std::vector<std::string_view> Words(std::string_view line);

// Rounds to the nearest nanosecond.
Time FromSeconds(double seconds);

double ToSeconds(Time time);

}  // namespace orvalis_unit
