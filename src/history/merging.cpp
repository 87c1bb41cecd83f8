#include "history/merging.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace orvalis {
namespace {

/// Adds those of `names` that `reasons` lacks; both have blanks between them.
void AddReasons(std::string& reasons, std::string_view names) {
  while (!names.empty()) {
    const std::size_t end = std::min(names.find(' '), names.size());
    const std::string name(names.substr(0, end));
    names.remove_prefix(std::min(end + 1, names.size()));
    if (name.empty() || (" " + reasons + " ").find(" " + name + " ") != std::string::npos) continue;
    if (!reasons.empty()) reasons += ' ';
    reasons += name;
  }
}

}  // namespace

void SpanMerger::Add(const Span& span) {
  const bool merges = column_ms_ > 0 && !spans_.empty() && span.first / column_ms_ == spans_.back().first / column_ms_;
  if (!merges) {
    spans_.push_back(span);
    return;
  }
  Span& column = spans_.back();
  column.last = std::max(column.last, span.last);
  column.held.Put(span.held);
  column.conditions.Put(span.conditions);
  for (std::size_t i = 0; i < kQuantities; ++i) {
    const auto quantity = static_cast<Quantity>(i);
    // A number wins over an unknown one.
    column.lowest[quantity] = std::fmin(column.lowest[quantity], span.lowest[quantity]);
    column.highest[quantity] = std::fmax(column.highest[quantity], span.highest[quantity]);
  }
}

void VerdictMerger::Add(const RecordedVerdict& verdict) {
  if (column_ms_ == 0) {
    verdicts_.push_back(verdict);
    return;
  }
  if (verdict.safe && verdict.source == ReadingSource::kDemo) return;
  const std::int64_t column = verdict.first / column_ms_;
  if (column != column_) Flush();
  column_ = column;
  if (verdict.last / column_ms_ != column) {
    Flush();
    verdicts_.push_back(verdict);
  } else {
    Merge(verdict);
  }
}

void VerdictMerger::Merge(const RecordedVerdict& verdict) {
  std::optional<RecordedVerdict>& merged = merged_[verdict.safe ? 1 : 0];
  if (!merged) {
    merged = verdict;
    return;
  }
  merged->last = verdict.last;
  AddReasons(merged->reasons, verdict.reasons);
  merged->explanation.clear();  // there is none for all of them
}

void VerdictMerger::Flush() {
  auto [one, other] = std::exchange(merged_, {});
  if (one && other) {
    // Both in the column, one after the other.
    if (other->first < one->first) std::swap(one, other);
    const std::int64_t end = std::max(one->last, other->last);
    one->last = std::max(one->first, std::min(one->last, (one->first + end) / 2));
    other->first = std::max(other->first, one->last);
    other->last = end;
  }
  for (std::optional<RecordedVerdict>& verdict : {std::ref(one), std::ref(other)}) {
    if (verdict) verdicts_.push_back(std::move(*verdict));
  }
}

std::vector<RecordedVerdict> VerdictMerger::Take() {
  Flush();
  return std::move(verdicts_);
}

}  // namespace orvalis
