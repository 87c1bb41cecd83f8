#pragma once

#include <filesystem>
#include <string>

namespace orvalis {

/// What a program that a fault ended leaves in its folder for the next start. The first line is the report's, the
/// backtrace follows.
inline constexpr const char* kCrashNoteFile = "orvalis_crash.txt";

/// The first line of the note in `folder`, which is removed; "" when there is none. The error log keeps the whole.
[[nodiscard]] std::string TakeCrashNote(const std::filesystem::path& folder);

}  // namespace orvalis
