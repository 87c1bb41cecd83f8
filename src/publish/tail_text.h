#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace orvalis {

/// Text that grows at its end and drops its beginning, so that no server can fill the memory. The tail is shown; some
/// text before it is kept too, so that a word across the cut can be recognised.
class TailText {
 public:
  static constexpr std::size_t kShown = 65'536;

  void Append(std::string_view text) {
    if (text.empty()) return;
    ++version_;
    if (text.size() > kKept) text.remove_prefix(text.size() - kKept);
    text_ += text;
    // In large steps: moving the text for every few bytes would cost more than receiving them.
    if (text_.size() > kKept + kShown) text_.erase(0, text_.size() - kKept);
  }
  void Replace(std::string text) {
    ++version_;
    text_ = std::move(text);
  }

  /// The last 64 KB at most.
  [[nodiscard]] std::string_view View() const { return All().substr(shown_from()); }
  /// All that is kept, and where in it the shown part begins.
  [[nodiscard]] std::string_view All() const { return text_; }
  [[nodiscard]] std::size_t shown_from() const { return text_.size() > kShown ? text_.size() - kShown : 0; }
  /// Changes with every change of the text.
  [[nodiscard]] std::uint64_t version() const { return version_; }

 private:
  static constexpr std::size_t kKept = 2 * kShown;

  std::string text_;
  std::uint64_t version_ = 0;
};

}  // namespace orvalis
