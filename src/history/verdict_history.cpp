#include "history/verdict_history.h"

#include <iterator>
#include <utility>

#include "verdict/explanation.h"

namespace orvalis {
namespace {

bool ComesBefore(const RecordedVerdict& verdict, std::int64_t time) { return verdict.first < time; }

}  // namespace

RecordedVerdict RecordOf(const Observation& now, std::int64_t time) {
  std::string reasons;
  now.verdict.reasons.ForEach([&](Reason reason) {
    if (!reasons.empty()) reasons += ' ';
    reasons += Name(reason);
  });
  return {.first = time,
          .last = time,
          .safe = now.verdict.safe,
          .source = now.source,
          .reasons = std::move(reasons),
          .explanation = Explain(now)};
}

void VerdictHistory::Put(const RecordedVerdict& verdict) {
  latest_ = verdict.last;
  auto at = std::lower_bound(verdicts_.begin(), verdicts_.end(), verdict.first, ComesBefore);
  if (at != verdicts_.end() && at->first == verdict.first) {
    *at = verdict;
  } else {
    at = verdicts_.insert(at, verdict);
    ++revision_;
  }
  if (at != verdicts_.begin()) {
    RecordedVerdict& before = *std::prev(at);
    before.last = std::min(before.last, verdict.first);
  }
  const auto next = std::next(at);
  const auto later = std::lower_bound(next, verdicts_.end(), verdict.last, ComesBefore);
  if (next != later) ++revision_;
  verdicts_.erase(next, later);
  Thin();
}

void VerdictHistory::Load(const std::vector<RecordedVerdict>& stored, std::int64_t now) {
  // Few came while the store was opened; they are put one by one.
  const std::deque<RecordedVerdict> added = std::exchange(verdicts_, {});
  for (const RecordedVerdict& verdict : stored) {
    const bool in_order = verdicts_.empty() || verdict.first >= verdicts_.back().last;
    if (in_order && verdict.last >= verdict.first) verdicts_.push_back(verdict);
  }
  latest_ = now;
  ++revision_;
  Thin();
  for (const RecordedVerdict& verdict : added) Put(verdict);
}

void VerdictHistory::Thin() {
  while (!verdicts_.empty() && verdicts_.front().last < latest_ - kept_ms_) verdicts_.pop_front();
  // Too far ahead to wait for the clock.
  while (!verdicts_.empty() && verdicts_.back().first > latest_ + History::kUnthinnedMs) verdicts_.pop_back();
  while (verdicts_.size() > most_) verdicts_.pop_front();
}

std::optional<TimeRange> VerdictHistory::Extent() const {
  if (verdicts_.empty() || verdicts_.front().first > latest_) return std::nullopt;
  return TimeRange{.from = std::max(verdicts_.front().first, latest_ - kept_ms_), .to = latest_};
}

}  // namespace orvalis
