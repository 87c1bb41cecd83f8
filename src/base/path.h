#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace orvalis {

// Paths are UTF-8 in settings and texts, and in the system's own encoding in its calls. These two conversions are
// lossless; those of std::filesystem use a code page on some systems.

[[nodiscard]] inline std::filesystem::path PathFromText(std::string_view text) {
  return std::u8string(text.begin(), text.end());
}

[[nodiscard]] inline std::string TextOfPath(const std::filesystem::path& path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace orvalis
