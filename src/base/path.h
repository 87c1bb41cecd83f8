#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace orvalis {

// Paths are UTF-8 in the settings and in texts, and whatever the system has in its calls. Converting them by these two
// keeps every letter of them; the path's own conversions go by a code page on some systems.

[[nodiscard]] inline std::filesystem::path PathFromText(std::string_view text) {
  return std::u8string(text.begin(), text.end());
}

[[nodiscard]] inline std::string TextOfPath(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace orvalis
