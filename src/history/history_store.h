#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "history/sample.h"

namespace orvalis {

/// Where the history outlives the program. Whatever fails throws RunTimeError kPathFileAccess with a text for a person,
/// and may be tried again. What cannot be read any more is set aside by the store itself.
class HistoryStore {
 public:
  struct Batch {
    /// Time of the sample before the first one, when they follow closely on each other: what else claims the time in
    /// between gives way.
    std::optional<std::int64_t> follows;
    std::vector<Sample> samples;
    std::vector<Span> spans;  ///< each replaces one with the same beginning, which was not complete then
  };
  struct Part {
    std::vector<Span> spans;
    std::vector<Sample> samples;
  };

  virtual ~HistoryStore() = default;

  /// The spans that begin from `spans_from` on and end before `samples_from`, and the samples from there to `to`, in
  /// the order of their times. Where a span goes across `samples_from` the samples begin where it does, so that nothing
  /// is missing in between. Empty when nothing was ever stored.
  [[nodiscard]] virtual Part Load(std::int64_t spans_from, std::int64_t samples_from, std::int64_t to) = 0;

  /// Stores all of it or nothing.
  virtual void Write(const Batch& batch) = 0;

  /// Removes samples and spans that are older.
  virtual void Forget(std::int64_t samples_before, std::int64_t spans_before) = 0;
};

}  // namespace orvalis
