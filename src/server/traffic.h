#pragma once

#include <array>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace orvalis {

/// What a call of a client is about; each has its own check box in the traffic window.
enum class TrafficCategory { kMove, kOther, kTemp, kMoving };
constexpr std::size_t kTrafficCategories = 4;

/// The running text of the traffic window: the calls of clients and what they were answered. The pieces are ASCII but
/// for a locale's decimal separator; lines end in CR LF.
class Traffic {
 public:
  /// Older characters go with each write, even in the middle of a line.
  static constexpr std::size_t kKeptCharacters = 2000;

  /// A line of its own; a line that is open is closed first.
  void TrafficLine(std::string_view piece);
  /// Begins a line that a later `TrafficEnd` finishes. A line that is open ends there, unfinished.
  void TrafficStart(std::string_view piece);
  /// The end of the open line.
  void TrafficEnd(std::string_view piece);
  /// An item of the open line, separated by a blank.
  void TrafficChar(std::string_view piece);

  void Clear();
  /// While paused, writing does nothing at all.
  void TogglePaused() { paused_ = !paused_; }
  [[nodiscard]] bool paused() const { return paused_; }

  /// Whether the writers are to write calls of this category. The text itself takes everything.
  [[nodiscard]] bool Wants(TrafficCategory category) const { return wanted_[static_cast<std::size_t>(category)]; }
  void SetWanted(TrafficCategory category, bool on) { wanted_[static_cast<std::size_t>(category)] = on; }

  [[nodiscard]] const std::string& text() const { return text_; }
  /// `changed` is called after each change of the text. It must not write.
  void OnChange(std::function<void()> changed) { changed_ = std::move(changed); }

 private:
  void Append(std::string_view separator, std::string_view piece, std::string_view ending);

  std::string text_;
  bool at_line_start_ = true;
  bool paused_ = false;
  std::array<bool, kTrafficCategories> wanted_ = {true, true, true, false};
  std::function<void()> changed_;
};

}  // namespace orvalis
