#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "publish/url_helper.h"

namespace orvalis {

/// The methods to choose from; the first one is what is sent unless the user chooses.
inline constexpr std::array<std::string_view, 3> kRequestMethods{"GET", "POST", "HEAD"};

/// A row of the request: a header, or a variable.
struct RequestRow {
  std::string name;
  std::string value;
};

/// One request to a web server.
struct HttpRequest {
  std::string_view method = kRequestMethods.front();
  UrlRecord url;
  std::string query{};                ///< with "GET" behind the path, otherwise the body
  std::vector<RequestRow> headers{};  ///< of the user; rows without any text are left out
};

/// What is wrong with the URL in the words of a message box, or "".
struct UrlComplaint {
  std::string_view text;
  std::string_view title;
};
[[nodiscard]] UrlComplaint Complaint(const UrlRecord& url);

/// Throws RunTimeError kInvalidCall, saying why, for a URL that `Complaint` accepts and that cannot be sent to all the
/// same: one that is too long, or whose host or port cannot be one.
void CheckUrl(std::string_view text, const UrlRecord& url);

/// The port to connect to: the one that the URL names, or the web's own.
[[nodiscard]] std::uint16_t PortOf(const UrlRecord& url);

/// The bytes of the request: HTTP/1.0, the host, the content's headers, those of the user and, unless the user's say
/// otherwise, "Connection: close". Throws RunTimeError kInvalidCall where a control character, or a header's name that
/// is none, would make something else of the request than what it seems.
[[nodiscard]] std::string RequestText(const HttpRequest& request);
/// The same with `shown` in the place of the query, for somebody's eyes: the length is that of what is sent.
[[nodiscard]] std::string ShownText(const HttpRequest& request, std::string_view shown);

/// Whether `text` holds a byte below 32, or 127.
[[nodiscard]] bool HasControlCharacter(std::string_view text);

}  // namespace orvalis
