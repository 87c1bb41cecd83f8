#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "network/http/sockets.h"

namespace orvalis::network {

class EventChannel;

enum class Method : std::uint8_t { kGet, kHead, kPut, kOptions, kOther };

/// Statuses that the program answers with.
enum Status : int {
  kContinue = 100,
  kOk = 200,
  kNoContent = 204,
  kBadRequest = 400,
  kForbidden = 403,
  kNotFound = 404,
  kMethodNotAllowed = 405,
  kRequestTimeout = 408,
  kContentTooLarge = 413,
  kExpectationFailed = 417,
  kMisdirectedRequest = 421,
  kTooManyRequests = 429,
  kHeaderTooLarge = 431,
  kInternalError = 500,
  kNotImplemented = 501,
  kUnavailable = 503,
  kBadVersion = 505,
};
[[nodiscard]] std::string_view ReasonPhrase(int status);

struct HeaderField {
  std::string_view name;
  std::string_view value;
};

/// A complete request. Its texts are valid while it is being answered.
struct HttpRequest {
  Method method = Method::kOther;
  std::string_view method_name;  ///< as sent
  std::string_view authority;    ///< host and port that the client believes to talk to; "" when it does not say
  std::string_view path;         ///< as sent, without the query
  std::string_view query;        ///< what follows the "?"
  std::span<const HeaderField> headers;
  std::string_view body;
  Peer peer;

  /// The value of the first field called `name`, in any case; "" when there is none.
  [[nodiscard]] std::string_view Header(std::string_view name) const;
};

/// An answer. What every answer carries (its length, `no-store` …) the server adds.
struct HttpResponse {
  int status = kOk;
  std::string_view content_type = "text/plain; charset=utf-8";  ///< a constant
  std::string body = {};
  std::vector<std::pair<std::string_view, std::string>> headers = {};  ///< further ones, with constant names
  /// Not null: `body` is the beginning of a stream, which goes on with the events of this channel.
  EventChannel* events = nullptr;
};

inline constexpr std::string_view kJsonType = "application/json; charset=utf-8";
inline constexpr std::string_view kHtmlType = "text/html; charset=utf-8";
inline constexpr std::string_view kEventStreamType = "text/event-stream; charset=utf-8";

/// A short text with `status`.
[[nodiscard]] HttpResponse TextAnswer(int status, std::string text);

/// Whether `a` and `b` are the same but for the case of ASCII letters.
[[nodiscard]] bool SameIgnoringCase(std::string_view a, std::string_view b);

/// `text` with what HTML takes for markup replaced.
[[nodiscard]] std::string EscapeHtml(std::string_view text);

}  // namespace orvalis::network
