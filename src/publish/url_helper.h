#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace orvalis {

/// The parts of a URL.
struct UrlRecord {
  std::string scheme;     ///< text before "://", or empty
  std::string host;       ///< includes ":" and the port when no "/" follows
  std::int16_t port = 0;  ///< 0 when the URL has none or it is not a number
  std::string path;       ///< from the first "/" after the host up to "?"; "/" when the URL has none
  std::string query;      ///< what follows the first "?"

  bool operator==(const UrlRecord&) const = default;
};

/// Splits `url` into its parts without decoding or checking them. Throws RunTimeError kOverflow for a port beyond 16
/// bits.
[[nodiscard]] UrlRecord SplitUrl(std::string_view url);

/// Converts UTF-8 to the system's single-byte code page, with "?" for characters it lacks; does nothing where the code
/// page is UTF-8.
using ToCodePage = std::function<std::string(std::string_view utf8)>;

/// `text` encoded for a query: digits and the letters A to Z stay, every other byte becomes "%" and its value in
/// upper-case hexadecimal, without a leading zero.
[[nodiscard]] std::string UrlEncode(std::string_view text);
/// The same for text beyond ASCII: the values are those of the code page.
[[nodiscard]] inline std::string UrlEncode(std::string_view utf8, const ToCodePage& to_code_page) {
  return UrlEncode(to_code_page(utf8));
}

}  // namespace orvalis
