#include "history/long_history.h"

#include <algorithm>
#include <utility>
#include <variant>

#include "base/run_time_error.h"

namespace orvalis {

HistoryView LongHistory::ViewOf(TimeRange range, int columns) {
  const HistoryView recent = parts_.recent();
  const std::int64_t column_ms = std::max<std::int64_t>(1, (range.to - range.from) / std::max(1, columns));
  past_in_view_ = false;
  if (!IsPast(recent, range, column_ms)) {
    reader_.Stop();
    return recent;
  }
  Want(range, column_ms);
  past_in_view_ = past_ && past_->range.from <= range.to && past_->range.to >= range.from;
  return View();
}

bool LongHistory::IsPast(const HistoryView& recent, TimeRange range, std::int64_t column_ms) const {
  if (recent.demo || !begin_) return false;
  const std::int64_t kept_from = parts_.now() - History::kKeptMs;
  return *begin_ < kept_from && range.from < kept_from - column_ms;
}

bool LongHistory::Covers(TimeRange read, std::int64_t read_column_ms, TimeRange range, std::int64_t column_ms) const {
  return read.from <= std::max(range.from, *begin_) && read.to >= std::min(range.to, parts_.now()) - column_ms &&
         read_column_ms <= column_ms;
}

void LongHistory::Want(TimeRange range, std::int64_t column_ms) {
  if (!failure_.empty()) return;
  if (past_ && Covers(past_->range, past_->column_ms, range, column_ms)) {
    reader_.Stop();
    return;
  }
  const PastReader::Request* coming = reader_.request();
  if (coming != nullptr && Covers(coming->range, coming->column_ms, range, column_ms)) return;
  const std::int64_t beside = range.to - range.from;
  const TimeRange wanted{.from = std::max(range.from - beside, *begin_),
                         .to = std::min(range.to + beside, std::max(range.to, parts_.now()))};
  reader_.Read({.range = wanted, .column_ms = std::max<std::int64_t>(1, column_ms / 2)}, [this](auto result) {
    if (auto* past = std::get_if<Past>(&result)) {
      past_.emplace(std::move(*past));
    } else {
      failure_ = std::get<std::string>(result);
    }
    ++reads_;
    parts_.changed();
  });
}

std::optional<TimeRange> LongHistory::Extent() const {
  const HistoryView recent = parts_.recent();
  std::optional<TimeRange> all = recent.history.Extent();
  const auto add = [&](const std::optional<TimeRange>& more) {
    if (!more) return;
    all = {.from = std::min(more->from, all.value_or(*more).from), .to = std::max(more->to, all.value_or(*more).to)};
  };
  // Demo values are of this run alone.
  if (recent.demo) return all;
  // Without a unit there is a verdict all the same.
  add(recent.verdicts.Extent());
  if (begin_ && *begin_ < parts_.now() - History::kKeptMs) add(TimeRange{.from = *begin_, .to = *begin_});
  return all;
}

std::uint64_t LongHistory::revision() const {
  if (past_in_view_) return reads_;
  const HistoryView recent = parts_.recent();
  return recent.history.revision() + recent.verdicts.revision() + reads_;
}

void LongHistory::Refresh() {
  failure_.clear();
  try {
    begin_ = reader_.Begin();
  } catch (const RunTimeError& error) {
    failure_ = error.what();
  }
}

void LongHistory::Forget() {
  reader_.Stop();
  past_.reset();
  past_in_view_ = false;
}

}  // namespace orvalis
