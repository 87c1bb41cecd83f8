#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>

#include "history/history.h"
#include "history/past_reader.h"
#include "history/verdict_bands.h"

namespace orvalis {

/// The history of any time, for pictures: that of the last 48 hours as it is in memory, what is older from the store.
class LongHistory {
 public:
  struct Parts {
    std::function<HistoryView()> recent;  ///< what is in memory
    std::function<std::int64_t()> now;    ///< ms since 1970-01-01 UTC
    std::function<void()> changed;        ///< called when `ViewOf` has more to give, or never will
  };
  LongHistory(Parts parts, const PastReader::Parts& store) : parts_(std::move(parts)), reader_(store) {}

  /// For a picture `columns` wide that shows `range`: what is known now. What is older than the memory is read
  /// meanwhile, merged into half columns, with as much on either side.
  [[nodiscard]] HistoryView ViewOf(TimeRange range, int columns);
  /// What is there without reading.
  [[nodiscard]] HistoryView View() const { return past_in_view_ ? PastView() : parts_.recent(); }
  /// Whether the last view is from the store.
  [[nodiscard]] bool past_in_view() const { return past_in_view_; }

  /// From the first value or verdict to the last.
  [[nodiscard]] std::optional<TimeRange> Extent() const;
  /// Changes with what the last view shows.
  [[nodiscard]] std::uint64_t revision() const;
  [[nodiscard]] bool reading() const { return reader_.request() != nullptr; }
  /// Why the store cannot be read, or "".
  [[nodiscard]] const std::string& failure() const { return failure_; }

  /// Looks how far back the store goes, and tries again what failed.
  void Refresh();
  /// Frees what was read.
  void Forget();

 private:
  [[nodiscard]] bool IsPast(const HistoryView& recent, TimeRange range, std::int64_t column_ms) const;
  /// Reads what a picture of `range` needs, unless it is there or on its way.
  void Want(TimeRange range, std::int64_t column_ms);
  [[nodiscard]] bool Covers(TimeRange read, std::int64_t read_column_ms, TimeRange range, std::int64_t column_ms) const;
  [[nodiscard]] HistoryView PastView() const { return {.history = past_->history, .verdicts = past_->verdicts}; }

  Parts parts_;
  PastReader reader_;
  std::optional<std::int64_t> begin_;  ///< of the store
  std::optional<Past> past_;
  bool past_in_view_ = false;
  std::uint64_t reads_ = 0;
  std::string failure_;
};

}  // namespace orvalis
