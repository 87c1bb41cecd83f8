#include "address.h"

#include <arpa/inet.h>

#include <charconv>

namespace orvalis::indi {
namespace {

constexpr std::size_t kLongestHost = 253;

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::string_view::npos) return "";
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

/// Nothing that could become another part of a URL.
bool IsHost(const std::string& text) {
  constexpr std::string_view kAllowed = "0123456789abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ-_.";
  in6_addr number{};
  if (inet_pton(AF_INET6, text.c_str(), &number) == 1) return true;
  return !text.empty() && text.size() <= kLongestHost && text.front() != '-' &&
         text.find_first_not_of(kAllowed) == std::string::npos;
}

}  // namespace

std::optional<Address> Address::Read(std::string_view host, std::string_view port) {
  Address address{.host = std::string(Trimmed(host))};
  port = Trimmed(port);
  const auto [end, error] = std::from_chars(port.data(), port.data() + port.size(), address.port);
  const bool whole = error == std::errc() && end == port.data() + port.size() && address.port != 0;
  if (!whole || !IsHost(address.host)) return std::nullopt;
  return address;
}

std::string Address::Text() const {
  const std::string written = host.find(':') == std::string::npos ? host : "[" + host + "]";
  return written + ":" + std::to_string(port);
}

}  // namespace orvalis::indi
