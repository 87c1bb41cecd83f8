#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvalis {

/// The category of a client's call; each has its own check box in the traffic window.
enum class TrafficCategory { kMove, kOther, kTemp, kMoving, kNetwork };

/// A call that was answered, for the table of the traffic window.
struct TrafficCall {
  std::int64_t began = 0;  ///< milliseconds since 1970-01-01 UTC
  std::string caller;
  std::string member;
  std::string answer;  ///< the value, or what was wrong
  std::chrono::microseconds took{0};
};

class Traffic;

/// Times a call from its beginning to its answer. While the traffic window is closed it does nothing. The texts that it
/// is given must outlive it.
class CallTimer {
 public:
  CallTimer(Traffic* const& traffic, TrafficCategory category, std::string_view caller, std::string_view member);

  /// Whether the call is to be entered.
  [[nodiscard]] bool runs() const { return window_ != nullptr; }
  /// Enters the call into the table, if the window in which it began is still open.
  void End(std::string_view answer) const;

 private:
  using Stopwatch = std::chrono::steady_clock;

  Traffic* const* traffic_;
  Traffic* window_ = nullptr;  ///< in which the call began; null where it is not to be entered
  std::string_view caller_;
  std::string_view member_;
  Stopwatch::time_point began_;
};

}  // namespace orvalis
