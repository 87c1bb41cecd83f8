#include "history/verdict_bands.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <string_view>

#include "history/condition_bands.h"

namespace orvalis {
namespace {

bool IsKnown(const RecordedVerdict& verdict, bool demo) {
  return !verdict.safe || demo || verdict.source != ReadingSource::kDemo;
}

/// Calls `visit` with each of `names`, which have blanks between them.
template <typename Visit>
void ForEachName(std::string_view names, Visit visit) {
  while (!names.empty()) {
    const std::size_t end = std::min(names.find(' '), names.size());
    if (end > 0) visit(names.substr(0, end));
    names.remove_prefix(std::min(end + 1, names.size()));
  }
}

/// The times that the unit called unsafe, taken in order.
class UnitBands {
 public:
  UnitBands(const History& history, TimeRange range)
      : bands_(ConditionBands(history, Condition::kUnsafe, range, std::numeric_limits<int>::max())) {}

  /// Calls `add(TimeRange)` for what there is from `from` on and before `to`. Each call begins after the last one's
  /// end.
  template <typename Add>
  void ForEachWithin(std::int64_t from, std::int64_t to, Add add) {
    for (; next_ < bands_.size() && bands_[next_].from < to; ++next_) {
      const TimeRange& band = bands_[next_];
      const TimeRange part{.from = std::max(band.from, from), .to = std::min(band.to, to)};
      const bool moment = band.from == band.to && band.from >= from;
      if (moment || part.from < part.to) add(part);
      if (band.to > to) return;  // the rest may be in the next gap
    }
  }

 private:
  std::vector<TimeRange> bands_;
  std::size_t next_ = 0;
};

}  // namespace

VerdictBands BandsOf(const HistoryView& view, TimeRange range, int columns) {
  const std::int64_t column_ms = (range.to - range.from) / std::max(1, columns);
  VerdictBands bands;
  UnitBands unit(view.history, range);
  std::int64_t recorded_to = range.from;
  const auto fill_gap = [&](std::int64_t to) {
    unit.ForEachWithin(recorded_to, to, [&](TimeRange band) { AddBand(bands.unsafe, band, column_ms); });
  };
  view.verdicts.Visit(range, [&](const RecordedVerdict& verdict) {
    if (!IsKnown(verdict, view.demo)) return;
    const TimeRange band{.from = std::max(verdict.first, range.from), .to = std::min(verdict.last, range.to)};
    if (band.from > recorded_to) fill_gap(band.from);
    AddBand(verdict.safe ? bands.safe : bands.unsafe, band, column_ms);
    recorded_to = band.to;
  });
  fill_gap(range.to + 1);
  return bands;
}

VerdictSummary VerdictDuring(const HistoryView& view, TimeRange range) {
  VerdictSummary summary;
  const std::optional<TimeRange> extent = view.verdicts.Extent();
  if (!extent) return summary;
  // The newest verdict holds until the next one comes; it was last confirmed a moment ago.
  if (range.from - extent->to <= kLongestStepMs) range.from = std::min(range.from, extent->to);
  const auto take = [&](const RecordedVerdict& verdict) {
    if (!IsKnown(verdict, view.demo)) return;
    if (!verdict.safe) summary.explanation = summary.unsafe ? "" : verdict.explanation;
    (verdict.safe ? summary.safe : summary.unsafe) = true;
    ForEachName(verdict.reasons, [&](std::string_view name) {
      if (std::ranges::find(summary.reasons, name) == summary.reasons.end()) summary.reasons.emplace_back(name);
    });
  };
  // Where one ends and another begins, it is the other's time.
  const RecordedVerdict* ends = nullptr;
  view.verdicts.Visit(range, [&](const RecordedVerdict& verdict) {
    if (ends != nullptr && verdict.first != range.from) take(*ends);
    ends = nullptr;
    if (verdict.last == range.from && verdict.first < range.from) {
      ends = &verdict;
    } else {
      take(verdict);
    }
  });
  if (ends != nullptr) take(*ends);
  return summary;
}

}  // namespace orvalis
