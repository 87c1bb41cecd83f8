#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <utility>

#include "network/alpaca/alpaca_call.h"

namespace orvalis::network {

/// Which clients have connected to a device. Each has its own state, because several share the device: that one leaves
/// takes nothing from another. A client is known by its number and its address, because many use the same number.
class AlpacaClients {
 public:
  /// Beyond this, one that used the device longest ago is forgotten.
  static constexpr std::size_t kMost = 256;
  /// A client that has not called for so long is gone, in milliseconds.
  static constexpr std::int64_t kForgottenAfter = std::int64_t{24} * 60 * 60 * 1'000;

  /// `tick` is the time in milliseconds.
  void SetConnected(const AlpacaCall& call, bool connected, std::int64_t tick);
  [[nodiscard]] bool IsConnected(const AlpacaCall& call, std::int64_t tick);

 private:
  using Key = std::pair<std::string, std::uint32_t>;
  static Key KeyOf(const AlpacaCall& call);
  void ForgetOne();

  std::map<Key, std::int64_t> last_calls_;  ///< of those that are connected
};

}  // namespace orvalis::network
