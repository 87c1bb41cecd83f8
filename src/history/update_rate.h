#pragma once

#include <chrono>
#include <optional>
#include <string>

namespace orvalis {

/// How often a graph is updated, from the position of its scroll bar: 0 is never, then come 1 to 59 seconds and 1 to 60
/// minutes.
class UpdateRate {
 public:
  static constexpr int kLastPosition = 119;

  constexpr explicit UpdateRate(int position) : position_(position) {}

  /// Nothing: never.
  [[nodiscard]] constexpr std::optional<std::chrono::seconds> Interval() const {
    if (position_ <= 0) return std::nullopt;
    if (position_ <= kLastSecond) return std::chrono::seconds(position_);
    return std::chrono::minutes(position_ - kLastSecond);
  }

  /// "Update 10 Sec", "Update 5 Min ", "Update Off"
  [[nodiscard]] std::string Label() const {
    if (position_ <= 0) return "Update Off";
    if (position_ <= kLastSecond) return "Update " + std::to_string(position_) + " Sec";
    return "Update " + std::to_string(position_ - kLastSecond) + " Min ";
  }

 private:
  static constexpr int kLastSecond = 59;

  int position_;
};

}  // namespace orvalis
