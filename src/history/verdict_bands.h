#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "history/history.h"
#include "history/verdict_history.h"

namespace orvalis {

/// What is shown beside each other: what was measured, and the verdicts.
struct HistoryView {
  const History& history;
  const VerdictHistory& verdicts;
  /// The measurements are demo values. Verdicts of either kind are in one history; a demo verdict "safe" says nothing
  /// about the real sky, and counts as unknown beside real measurements.
  bool demo = false;
};

struct VerdictBands {
  std::vector<TimeRange> safe;
  std::vector<TimeRange> unsafe;
};

/// When it was safe and unsafe within `range`, for a picture `columns` wide: bands of a kind closer together than a
/// column are merged. A band of zero length is a moment and must be drawn too. Where no verdict was recorded, unsafe is
/// what the unit's own digit called so, and nothing is safe: the digit alone does not make it so.
[[nodiscard]] VerdictBands BandsOf(const HistoryView& view, TimeRange range, int columns);

/// The verdicts during a time.
struct VerdictSummary {
  bool safe = false;    ///< some of it was safe
  bool unsafe = false;  ///< some of it was unsafe; neither: nothing was recorded
  std::vector<std::string> reasons;
  std::string explanation;  ///< of an unsafe verdict, when it was the only one

  /// "safe", "unsafe" when any of it was, "" where nothing was recorded.
  [[nodiscard]] std::string_view Word() const { return unsafe ? "unsafe" : (safe ? "safe" : ""); }
};
[[nodiscard]] VerdictSummary VerdictDuring(const HistoryView& view, TimeRange range);

}  // namespace orvalis
