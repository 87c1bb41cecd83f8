#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <utility>
#include <vector>

#include "history/sample.h"
#include "history/verdict_history.h"

namespace orvalis {

/// Merges what comes in time order into columns of time, so that a picture of many days takes no more memory than one
/// of a night. What is too narrow to be seen is lost: gaps within a column, and how a column is divided.
class SpanMerger {
 public:
  /// Columns are `column_ms` wide; 0 merges nothing.
  explicit SpanMerger(std::int64_t column_ms) : column_ms_(column_ms) {}

  void Add(const Span& span);
  [[nodiscard]] std::vector<Span> Take() { return std::move(spans_); }

 private:
  std::int64_t column_ms_;
  std::vector<Span> spans_;
};

/// The same for verdicts: of those within a column a safe and an unsafe one are left, with all their reasons. Merged, a
/// "safe" of demo values is left out: it says nothing about the sky.
class VerdictMerger {
 public:
  explicit VerdictMerger(std::int64_t column_ms) : column_ms_(column_ms) {}

  void Add(const RecordedVerdict& verdict);
  [[nodiscard]] std::vector<RecordedVerdict> Take();

 private:
  void Merge(const RecordedVerdict& verdict);
  /// Ends the column.
  void Flush();

  std::int64_t column_ms_;
  std::int64_t column_ = 0;
  std::array<std::optional<RecordedVerdict>, 2> merged_;  ///< of the column: unsafe, safe
  std::vector<RecordedVerdict> verdicts_;
};

}  // namespace orvalis
