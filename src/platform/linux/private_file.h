#pragma once

#include <string>

namespace orvalis {

/// Writes `text` into a file that only its owner can read, at any moment. A reader finds the complete file, old or
/// new. Throws RunTimeError kPathFileAccess.
void WritePrivateFile(const std::string& path, const std::string& text);

}  // namespace orvalis
