#pragma once

#include <array>
#include <cstddef>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "server/traffic_call.h"

namespace orvalis {

constexpr std::size_t kTrafficCategories = 5;

/// What the traffic window shows: the clients' calls and requests, and the answers, as running text and one by one. The
/// pieces are ASCII except for a locale's decimal separator; lines end in CR LF.
class Traffic {
 public:
  /// Each write drops older characters, even in the middle of a line.
  static constexpr std::size_t kKeptCharacters = 2000;
  /// How many calls wait at most to be taken; older ones are dropped.
  static constexpr std::size_t kKeptCalls = 1000;

  /// Writes a separate line, closing an open line first.
  void TrafficLine(std::string_view piece);
  /// Begins a line that a later `TrafficEnd` finishes. An open line is closed unfinished.
  void TrafficStart(std::string_view piece);
  /// Ends the open line.
  void TrafficEnd(std::string_view piece);
  /// Adds an item to the open line, separated by a blank.
  void TrafficChar(std::string_view piece);

  /// Adds a call that was answered just now to those that wait to be taken.
  void Enter(std::string_view caller, std::string_view member, std::string_view answer, std::chrono::microseconds took);
  /// The calls since this was last asked, oldest first.
  [[nodiscard]] std::deque<TrafficCall> TakeCalls() { return std::exchange(calls_, {}); }

  void Clear();
  /// While paused, writes are ignored.
  void TogglePaused() { paused_ = !paused_; }
  [[nodiscard]] bool paused() const { return paused_; }

  /// Whether calls of this category are to be written. Checked by the writers, not here.
  [[nodiscard]] bool Wants(TrafficCategory category) const { return wanted_[static_cast<std::size_t>(category)]; }
  void SetWanted(TrafficCategory category, bool on) { wanted_[static_cast<std::size_t>(category)] = on; }

  [[nodiscard]] const std::string& text() const { return text_; }
  /// `changed` is called after each change of text or calls. It must not write.
  void OnChange(std::function<void()> changed) { changed_ = std::move(changed); }

 private:
  void Append(std::string_view separator, std::string_view piece, std::string_view ending);

  std::string text_;
  std::deque<TrafficCall> calls_;
  bool at_line_start_ = true;
  bool paused_ = false;
  std::array<bool, kTrafficCategories> wanted_ = {true, true, true, false, false};
  std::function<void()> changed_;
};

}  // namespace orvalis
