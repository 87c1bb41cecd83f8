#include "network/http/request_guard.h"

#include <algorithm>
#include <charconv>

namespace orvalis::network {
namespace {

/// The host of "host", "host:port" and "[address]:port"; an IPv6 address keeps its brackets.
std::string_view HostOf(std::string_view authority) {
  const std::size_t from = authority.starts_with('[') ? std::min(authority.find(']'), authority.size()) : 0;
  return authority.substr(0, authority.find(':', from));
}

/// Four numbers up to 255 with points between them, as a browser writes every IPv4 address.
bool IsIpv4(std::string_view host) {
  const char* at = host.data();
  const char* const end = at + host.size();
  for (int part = 0; part < 4; ++part) {
    if (part > 0 && (at == end || *at++ != '.')) return false;
    unsigned value = 0;
    const auto [next, error] = std::from_chars(at, end, value);
    if (error != std::errc() || value > 255) return false;
    at = next;
  }
  return at == end;
}

bool IsAddress(std::string_view host) {
  if (!host.starts_with('[')) return IsIpv4(host);
  return host.ends_with(']') && host.find_first_not_of("0123456789abcdefABCDEF:.", 1) == host.size() - 1;
}

/// The authority of an origin such as "http://dome:11111"; "" for "null" and the like.
std::string_view AuthorityOf(std::string_view origin) {
  const std::size_t at = origin.find("://");
  return at == std::string_view::npos ? std::string_view() : origin.substr(at + 3);
}

}  // namespace

bool RequestGuard::IsOurName(std::string_view authority) const {
  std::string_view host = HostOf(authority);
  if (IsAddress(host)) return true;
  if (host.ends_with('.')) host.remove_suffix(1);
  if (SameIgnoringCase(host, "localhost")) return true;
  return std::ranges::any_of(names_, [&](const std::string& name) { return SameIgnoringCase(host, name); });
}

std::string_view RequestGuard::AllowedOrigin(const HttpRequest& request) const {
  const std::string_view origin = request.Header("Origin");
  const bool allowed = !origin.empty() && !allowed_origin_.empty() &&
                       (allowed_origin_ == "*" || SameIgnoringCase(origin, allowed_origin_));
  return allowed ? origin : std::string_view();
}

bool RequestGuard::IsForeignPage(const HttpRequest& request) const {
  const std::string_view origin = request.Header("Origin");
  if (!origin.empty()) {
    const std::string_view authority = AuthorityOf(origin);
    const std::string_view host = HostOf(authority);
    // Where a proxy forwards to us, the page has the proxy's name.
    const auto is_host = [&](const std::string& name) { return SameIgnoringCase(host, name); };
    return !SameIgnoringCase(authority, request.authority) && std::ranges::none_of(names_, is_host);
  }
  // A link to us may be followed from anywhere; what is embedded in a page may not come from here.
  return request.Header("Sec-Fetch-Site") == "cross-site" && request.Header("Sec-Fetch-Mode") != "navigate";
}

std::optional<HttpResponse> RequestGuard::Refuse(const HttpRequest& request, bool shared) const {
  if (!request.authority.empty() && !IsOurName(request.authority)) {
    return TextAnswer(kMisdirectedRequest,
                      "This machine is not known by that name. Use its address or its own name, or add the name to the "
                      "setting \"Names\"");
  }
  const bool reads = request.method != Method::kPut && request.method != Method::kOther;
  if (shared && reads && !AllowedOrigin(request).empty()) return std::nullopt;
  if (IsForeignPage(request)) return TextAnswer(kForbidden, "Pages of other sites may not ask for this");
  return std::nullopt;
}

std::vector<std::string> SplitNames(std::string_view text) {
  constexpr std::string_view kSeparators = " \t,;";
  std::vector<std::string> names;
  while (true) {
    text.remove_prefix(std::min(text.find_first_not_of(kSeparators), text.size()));
    if (text.empty()) return names;
    names.emplace_back(text.substr(0, text.find_first_of(kSeparators)));
    text.remove_prefix(names.back().size());
  }
}

}  // namespace orvalis::network
