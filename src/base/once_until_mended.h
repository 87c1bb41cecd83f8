#pragma once

#include <string>
#include <utility>

namespace orvalis {

/// Reports a recurring failure once, until it changes or is fixed.
class OnceUntilMended {
 public:
  /// Whether `failure` differs from the last one reported.
  [[nodiscard]] bool IsNews(const std::string& failure) {
    if (!std::exchange(repeat_, false) && failure == standing_) return false;
    standing_ = failure;
    return true;
  }
  /// The work succeeded. Returns whether there was a failure to recover from.
  bool Mended() {
    repeat_ = false;
    return !std::exchange(standing_, {}).empty();
  }
  /// The next failure is reported even if it is the same as the last.
  void Repeat() { repeat_ = true; }

  /// The failure reported last; empty when all is well.
  [[nodiscard]] const std::string& standing() const { return standing_; }

 private:
  std::string standing_;
  bool repeat_ = false;
};

}  // namespace orvalis
