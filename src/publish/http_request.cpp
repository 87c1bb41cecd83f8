#include "publish/http_request.h"

#include <algorithm>

#include "base/message.h"
#include "base/run_time_error.h"

namespace orvalis {
namespace {

constexpr auto kMethod = Message::Of("the method");
constexpr auto kHost = Message::Of("the host");
constexpr auto kUrlAndAccount = Message::Of("the URL, the station's ID or the password");
constexpr auto kUrl = Message::Of("the URL");
constexpr auto kAccountAndVariables = Message::Of("the station's ID, the password or a variable");
constexpr auto kBadHeaderName = Message::Of("a header name is empty or contains an invalid character");
constexpr auto kHeaderValue = Message::Of("the value of a header");

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::size_t kLongestUrl = 2048;
constexpr std::size_t kLongestHost = 253;
constexpr std::uint16_t kWebPort = 80;

[[noreturn]] void Refuse(const Message& why) { throw RunTimeError(RunTimeError::kInvalidCall, why); }

bool IsDigit(char c) { return c >= '0' && c <= '9'; }
bool IsLetter(char c) { return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z'); }

void RefuseControlCharacters(std::string_view text, Phrase where) {
  if (HasControlCharacter(text)) Refuse(Message::Of("there is a control character in %1").With(where));
}

/// Whether `name` is valid as a header name.
bool IsHeaderName(std::string_view name) {
  constexpr std::string_view kMarks = "!#$%&'*+-.^_`|~";
  return !name.empty() && std::all_of(name.begin(), name.end(), [&](char c) {
    return IsDigit(c) || IsLetter(c) || kMarks.find(c) != std::string_view::npos;
  });
}

bool SameName(std::string_view a, std::string_view b) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), [&](char x, char y) { return lower(x) == lower(y); });
}

/// The request with `query` instead of its own, but with its own Content-Length.
std::string Text(const HttpRequest& request, std::string_view query) {
  const bool in_path = request.method == "GET";
  std::string target = request.url.path;
  if (!request.url.query.empty()) target += '?' + request.url.query;
  if (in_path) target.append(request.url.query.empty() ? "?" : "&").append(query);
  RefuseControlCharacters(request.method, kMethod);
  RefuseControlCharacters(request.url.host, kHost);
  RefuseControlCharacters(target, in_path ? kUrlAndAccount : kUrl);
  if (!in_path) RefuseControlCharacters(query, kAccountAndVariables);

  std::string text;
  const auto line = [&text](std::string_view name, std::string_view value) {
    text.append(name).append(": ").append(value).append(kLineEnd);
  };
  text.append(request.method).append(" ").append(target).append(" HTTP/1.0").append(kLineEnd);
  line("Host", request.url.host);
  if (!in_path) {
    line("Content-Type", "application/x-www-form-urlencoded");
    line("Content-Length", std::to_string(request.query.size()));
  }
  bool names_connection = false;
  for (const RequestRow& header : request.headers) {
    if (header.name.empty() && header.value.empty()) continue;
    if (!IsHeaderName(header.name)) Refuse(kBadHeaderName);
    RefuseControlCharacters(header.value, kHeaderValue);
    names_connection = names_connection || SameName(header.name, "Connection");
    line(header.name, header.value);
  }
  if (!names_connection) line("Connection", "close");
  text.append(kLineEnd);
  if (!in_path) text.append(query);
  return text;
}

}  // namespace

UrlComplaint Complaint(const UrlRecord& url) {
  if (url.host.empty()) return {.text = "Invalid Host", .title = "ERROR"};
  if (url.scheme != "http") return {.text = "Invalid protocol schema", .title = "Orvalis"};
  return {};
}

void CheckUrl(std::string_view text, const UrlRecord& url) {
  if (text.size() > kLongestUrl) Refuse(Message::Of("the URL is longer than %1 characters").With(kLongestUrl));
  // The URL itself is not quoted: it may contain a password.
  if (url.host.find(':') != std::string::npos)
    Refuse(Message::Of("a URL with a port needs a path after it, or at least \"/\""));
  if (url.host.size() > kLongestHost) Refuse(Message::Of("the host name in the URL is too long"));
  const auto in_host = [](char c) { return IsDigit(c) || IsLetter(c) || c == '.' || c == '-' || c == '_'; };
  if (!std::all_of(url.host.begin(), url.host.end(), in_host))
    Refuse(Message::Of("the host name in the URL contains an invalid character"));
  // A port that is given but reads as 0 is an error, not the default port.
  const std::size_t after_host = url.scheme.size() + std::string_view("://").size() + url.host.size();
  const bool written = after_host < text.size() && text[after_host] == ':';
  if (written && url.port <= 0) Refuse(Message::Of("the port in the URL is not a valid port number"));
}

std::uint16_t PortOf(const UrlRecord& url) { return url.port == 0 ? kWebPort : static_cast<std::uint16_t>(url.port); }

std::string RequestText(const HttpRequest& request) { return Text(request, request.query); }

std::string ShownText(const HttpRequest& request, std::string_view shown) { return Text(request, shown); }

bool HasControlCharacter(std::string_view text) {
  constexpr unsigned char kDelete = 127;
  return std::any_of(text.begin(), text.end(), [](unsigned char c) { return c < ' ' || c == kDelete; });
}

}  // namespace orvalis
