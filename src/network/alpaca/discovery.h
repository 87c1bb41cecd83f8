#pragma once

#include <cstdint>
#include <map>
#include <string>

#include "network/http/sockets.h"

namespace orvalis::network {

/// Tells clients that look for Alpaca servers by a broadcast where this one is.
class AlpacaDiscovery {
 public:
  /// What is listened to where the HTTP server listens on `address`: what comes in elsewhere would be led to an address
  /// that does not answer.
  [[nodiscard]] static Sockets::SharedPort Port(const std::string& address);

  explicit AlpacaDiscovery(std::uint16_t http_port) : http_port_(http_port) {}

  /// The answer to a datagram that came at `tick` (milliseconds); "" for none. Limited, in all and for each address, so
  /// that forged questions cannot make much traffic for others.
  [[nodiscard]] std::string Answer(const Datagram& datagram, std::int64_t tick);

 private:
  std::uint16_t http_port_;
  std::int64_t second_ = 0;
  int answers_ = 0;                      ///< in that second
  std::map<std::string, int> answered_;  ///< in that second, by address
};

}  // namespace orvalis::network
