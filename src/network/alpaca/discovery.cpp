#include "network/alpaca/discovery.h"

#include <string_view>

namespace orvalis::network {
namespace {

constexpr std::uint16_t kDiscoveryPort = 32'227;
constexpr std::string_view kQuestion = "alpacadiscovery";
/// The question, its version, and room for what later versions add.
constexpr std::size_t kShortest = 16;
constexpr std::size_t kLongest = 64;
/// Answers in a second, and of these to one address: one that floods must not keep the others from finding us.
constexpr int kMostInASecond = 50;
constexpr int kMostForOne = 10;

bool IsVersion(char c) { return (c >= '1' && c <= '9') || (c >= 'A' && c <= 'Z'); }

}  // namespace

Sockets::SharedPort AlpacaDiscovery::Port(const std::string& address) {
  const bool all = address == "::";
  const bool is_ipv6 = address.find(':') != std::string::npos;
  return {.port = kDiscoveryPort,
          .group = "ff12::a1:9aca",
          .loopback_group = "ff11::a1:9aca",
          .only_on = all || address == "0.0.0.0" ? "" : address,
          .ipv4 = all || !is_ipv6,
          .ipv6 = is_ipv6};
}

std::string AlpacaDiscovery::Answer(const Datagram& datagram, std::int64_t tick) {
  const std::string_view bytes = datagram.bytes;
  if (bytes.size() < kShortest || bytes.size() > kLongest || !bytes.starts_with(kQuestion) ||
      !IsVersion(bytes[kQuestion.size()])) {
    return "";
  }
  if (tick / 1'000 != second_) {
    second_ = tick / 1'000;
    answers_ = 0;
    answered_.clear();
  }
  if (answers_ >= kMostInASecond || ++answered_[datagram.peer.address] > kMostForOne) return "";
  ++answers_;
  return "{\"AlpacaPort\":" + std::to_string(http_port_) + "}";
}

}  // namespace orvalis::network
