#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>

namespace orvalis::network {

/// Reports refused requests, one a minute: the first at once, the others of that minute as a number with the next.
class RefusalLog {
 public:
  explicit RefusalLog(std::function<void(const std::string&)> report) : report_(std::move(report)) {}

  /// `tick` is the time in milliseconds; `reason` holds nothing that the peer chose.
  void Note(std::int64_t tick, const std::string& peer, const std::string& reason) {
    constexpr std::int64_t kMinute = 60'000;
    if (reported_ && tick - last_ < kMinute) {
      ++unreported_;
      return;
    }
    std::string text = "A request from " + peer + " was refused: " + reason;
    if (unreported_ > 0) text += " (since the last such line: " + std::to_string(unreported_) + " more)";
    reported_ = true;
    last_ = tick;
    unreported_ = 0;
    report_(text);
  }

 private:
  std::function<void(const std::string&)> report_;
  bool reported_ = false;
  std::int64_t last_ = 0;
  std::uint64_t unreported_ = 0;
};

}  // namespace orvalis::network
