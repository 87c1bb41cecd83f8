#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvalis {

/// Text that grows at its end and forgets its beginning, so that no server can fill the memory with it.
class TailText {
 public:
  static constexpr std::size_t kKept = 65'536;

  void Append(std::string_view text) {
    if (text.empty()) return;
    ++version_;
    if (text.size() > kKept) text.remove_prefix(text.size() - kKept);
    text_ += text;
    // In large steps: shifting the text for every few bytes would cost more than receiving them.
    if (text_.size() > 2 * kKept) text_.erase(0, text_.size() - kKept);
  }
  void Clear() {
    ++version_;
    text_.clear();
  }

  /// The last 64 KB at most.
  [[nodiscard]] std::string_view View() const {
    const std::string_view all = text_;
    return all.size() > kKept ? all.substr(all.size() - kKept) : all;
  }
  /// Changes with every change of the text.
  [[nodiscard]] std::uint64_t version() const { return version_; }

 private:
  std::string text_;
  std::uint64_t version_ = 0;
};

}  // namespace orvalis
