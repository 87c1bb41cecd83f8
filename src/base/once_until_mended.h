#pragma once

#include <string>
#include <utility>

namespace orvalis {

/// A trouble that is met again and again, to be said once: what it is, until it is another one or is mended.
class OnceUntilMended {
 public:
  /// Whether `trouble` is news.
  [[nodiscard]] bool IsNews(const std::string& trouble) {
    if (trouble == standing_) return false;
    standing_ = trouble;
    return true;
  }
  /// It is mended. Whether that is news: whether there was a trouble.
  bool Mended() { return !std::exchange(standing_, {}).empty(); }

  /// What was said last and is not mended; empty when all is well.
  [[nodiscard]] const std::string& standing() const { return standing_; }

 private:
  std::string standing_;
};

}  // namespace orvalis
