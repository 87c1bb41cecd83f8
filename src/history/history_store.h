#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "history/sample.h"
#include "history/verdict_history.h"

namespace orvalis {

/// Persistent storage of the history. Failures throw RunTimeError kPathFileAccess with a text for a person, and can be
/// retried. The store itself sets an unreadable file aside.
class HistoryStore {
 public:
  struct Batch {
    /// Time of the sample before the first one, if they are close together: other rows that claim the time between are
    /// replaced.
    std::optional<std::int64_t> follows;
    std::vector<Sample> samples;
    std::vector<Span> spans;  ///< each replaces an incomplete one with the same beginning
    /// In the order in which they came; each replaces what claims the same time, and extends one with the same
    /// beginning.
    std::vector<RecordedVerdict> verdicts = {};
  };
  struct Part {
    std::vector<Span> spans;
    std::vector<Sample> samples;
    std::vector<RecordedVerdict> verdicts = {};
  };
  /// More verdicts than these are not kept: the oldest go. Four hundred days of a change every six minutes.
  static constexpr std::int64_t kMostVerdicts = 100'000;

  virtual ~HistoryStore() = default;

  /// The spans that begin at or after `spans_from` and end before `samples_from`, and the samples from there to `to`,
  /// in time order. If a span crosses `samples_from`, the samples start where it does, so that nothing is missing.
  /// The verdicts between `spans_from` and `to`, the newest of them if they are too many for a VerdictHistory. Empty
  /// when nothing was ever stored.
  [[nodiscard]] virtual Part Load(std::int64_t spans_from, std::int64_t samples_from, std::int64_t to) = 0;

  /// When the oldest span or verdict began, or nothing when nothing was ever stored. Quick.
  [[nodiscard]] virtual std::optional<std::int64_t> Begin() = 0;
  /// The first `most` spans that begin from `from` on and before `to`, in time order.
  [[nodiscard]] virtual std::vector<Span> Spans(std::int64_t from, std::int64_t to, std::size_t most) = 0;
  /// The first `most` verdicts between `from` and `to`, in time order. The first of them may have begun before.
  [[nodiscard]] virtual std::vector<RecordedVerdict> Verdicts(std::int64_t from, std::int64_t to, std::size_t most) = 0;

  /// Stores all of it or nothing.
  virtual void Write(const Batch& batch) = 0;

  /// Removes older samples, and older spans and verdicts.
  virtual void Forget(std::int64_t samples_before, std::int64_t spans_before) = 0;
};

}  // namespace orvalis
