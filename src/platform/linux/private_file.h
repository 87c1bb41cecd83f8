#pragma once

#include <string>

namespace orvalis {

/// Writes `text` into a file that its owner alone may read, at no moment anybody else. A reader finds the whole file,
/// old or new. Throws RunTimeError kPathFileAccess.
void WritePrivateFile(const std::string& path, const std::string& text);

}  // namespace orvalis
