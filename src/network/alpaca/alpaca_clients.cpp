#include "network/alpaca/alpaca_clients.h"

#include <algorithm>
#include <string_view>

namespace orvalis::network {

AlpacaClients::Key AlpacaClients::KeyOf(const AlpacaCall& call) {
  // A client on this machine may come from either of its own addresses.
  return {call.peer().loopback ? std::string() : call.peer().address, call.client()};
}

void AlpacaClients::SetConnected(const AlpacaCall& call, bool connected, std::int64_t tick) {
  if (!connected) {
    last_calls_.erase(KeyOf(call));
    return;
  }
  last_calls_.insert_or_assign(KeyOf(call), tick);
  if (last_calls_.size() > kMost) ForgetOne();
}

void AlpacaClients::ForgetOne() {
  // Of the address that has most, so that a program that takes ever new numbers pushes out nobody else.
  std::map<std::string_view, std::size_t> numbers;
  for (const auto& entry : last_calls_) ++numbers[entry.first.first];
  const auto crowd = std::ranges::max_element(numbers, {}, [](const auto& entry) { return entry.second; })->first;
  last_calls_.erase(std::ranges::min_element(
      last_calls_, {}, [&](const auto& entry) { return std::pair(entry.first.first != crowd, entry.second); }));
}

bool AlpacaClients::IsConnected(const AlpacaCall& call, std::int64_t tick) {
  const auto found = last_calls_.find(KeyOf(call));
  if (found == last_calls_.end()) return false;
  if (tick - found->second > kForgottenAfter) {
    last_calls_.erase(found);
    return false;
  }
  found->second = tick;
  return true;
}

}  // namespace orvalis::network
