#pragma once

#include <cstdint>
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

/// `text` as it may stand in a query: digits and the letters A to Z stay, every other byte becomes "%" and its number
/// in upper-case hexadecimal, without a leading zero.
[[nodiscard]] std::string UrlEncode(std::string_view text);

}  // namespace orvalis
