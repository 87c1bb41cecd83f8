#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace orvalis {

/// The parts of a URL.
struct UrlRecord {
  std::string scheme;     ///< what stands before "://"; empty when there is none
  std::string host;       ///< with ":" and what follows it when no "/" comes after
  std::int16_t port = 0;  ///< 0 when the URL names none, or something that is no number
  std::string path;       ///< from the first "/" behind the host up to "?"; "/" when the URL has none
  std::string query;      ///< what follows the first "?"

  bool operator==(const UrlRecord&) const = default;
};

/// Cuts `url` into its parts. Nothing is decoded and nothing is checked, but for a port beyond 16 bits, which throws
/// RunTimeError kOverflow.
[[nodiscard]] UrlRecord SplitUrl(std::string_view url);

/// A text in UTF-8 as the bytes of the system's single-byte code page, with "?" for what it does not have; on a system
/// whose code page is UTF-8, the same text.
using ToCodePage = std::function<std::string(std::string_view utf8)>;

/// `text` as it may stand in a query: digits and the letters A to Z stay, every other byte becomes "%" and its number
/// in upper-case hexadecimal, without a leading zero.
[[nodiscard]] std::string UrlEncode(std::string_view text);
/// The same for a text that may have letters beyond ASCII: the numbers are those of the code page.
[[nodiscard]] inline std::string UrlEncode(std::string_view utf8, const ToCodePage& to_code_page) {
  return UrlEncode(to_code_page(utf8));
}

}  // namespace orvalis
