#include "network/http/http_message.h"

#include <algorithm>
#include <array>

namespace orvalis::network {
namespace {

struct StatusReason {
  int status;
  std::string_view reason;
};
constexpr std::array<StatusReason, 17> kReasons{{
    {kContinue, "Continue"},
    {kOk, "OK"},
    {kNoContent, "No Content"},
    {kBadRequest, "Bad Request"},
    {kForbidden, "Forbidden"},
    {kNotFound, "Not Found"},
    {kMethodNotAllowed, "Method Not Allowed"},
    {kRequestTimeout, "Request Timeout"},
    {kContentTooLarge, "Content Too Large"},
    {kExpectationFailed, "Expectation Failed"},
    {kMisdirectedRequest, "Misdirected Request"},
    {kTooManyRequests, "Too Many Requests"},
    {kHeaderTooLarge, "Request Header Fields Too Large"},
    {kInternalError, "Internal Server Error"},
    {kNotImplemented, "Not Implemented"},
    {kUnavailable, "Service Unavailable"},
    {kBadVersion, "HTTP Version Not Supported"},
}};

char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

}  // namespace

std::string_view ReasonPhrase(int status) {
  const auto* const found = std::ranges::find(kReasons, status, &StatusReason::status);
  return found == kReasons.end() ? "" : found->reason;
}

std::string_view HttpRequest::Header(std::string_view name) const {
  const auto found =
      std::ranges::find_if(headers, [&](const HeaderField& field) { return SameIgnoringCase(field.name, name); });
  return found == headers.end() ? std::string_view() : found->value;
}

HttpResponse TextAnswer(int status, std::string text) {
  return {.status = status, .body = std::move(text.append("\n"))};
}

bool SameIgnoringCase(std::string_view a, std::string_view b) { return std::ranges::equal(a, b, {}, Lower, Lower); }

std::string EscapeHtml(std::string_view text) {
  std::string escaped;
  escaped.reserve(text.size());
  for (const char c : text) {
    switch (c) {
      case '&':
        escaped += "&amp;";
        break;
      case '<':
        escaped += "&lt;";
        break;
      case '>':
        escaped += "&gt;";
        break;
      case '"':
        escaped += "&quot;";
        break;
      case '\'':
        escaped += "&#39;";
        break;
      default:
        escaped += c;
    }
  }
  return escaped;
}

}  // namespace orvalis::network
