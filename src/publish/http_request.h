#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "publish/url_helper.h"

namespace orvalis {

/// The methods to choose from; the first is the default.
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
  std::string query{};                ///< appended to the path with "GET", otherwise the body
  std::vector<RequestRow> headers{};  ///< the user's; empty rows are skipped
};

/// The message box text for a bad URL, or "".
struct UrlComplaint {
  std::string_view text;
  std::string_view title;
};
[[nodiscard]] UrlComplaint Complaint(const UrlRecord& url);

/// Throws RunTimeError kInvalidCall for a URL that `Complaint` accepts but that cannot be used: too long, or with an
/// invalid host or port.
void CheckUrl(std::string_view text, const UrlRecord& url);

/// The port to connect to: the URL's, or 80.
[[nodiscard]] std::uint16_t PortOf(const UrlRecord& url);

/// The bytes of the request: HTTP/1.0, the host, the content headers, the user's headers and, unless those set it,
/// "Connection: close". Throws RunTimeError kInvalidCall for a control character or an invalid header name, which could
/// smuggle in another header or request.
[[nodiscard]] std::string RequestText(const HttpRequest& request);
/// The same with `shown` instead of the query, for display: Content-Length is still that of the real request.
[[nodiscard]] std::string ShownText(const HttpRequest& request, std::string_view shown);

/// Whether `text` holds a byte below 32, or 127.
[[nodiscard]] bool HasControlCharacter(std::string_view text);

}  // namespace orvalis
