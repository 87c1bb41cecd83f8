#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "history/history.h"
#include "verdict/observation.h"

namespace orvalis {

/// A verdict and how long it was given for the same reasons. Times are milliseconds since 1970-01-01 UTC.
struct RecordedVerdict {
  std::int64_t first = 0;  ///< when it came
  std::int64_t last = 0;   ///< when the next one came, or when it was last confirmed
  bool safe = false;
  ReadingSource source = ReadingSource::kNone;  ///< of the readings when it came
  /// The names of the reasons, with blanks between them: another version of the program may have others.
  std::string reasons;
  std::string explanation;  ///< as it was when the verdict came

  bool operator==(const RecordedVerdict&) const = default;
};

/// `now`, to be recorded from `time` on.
[[nodiscard]] RecordedVerdict RecordOf(const Observation& now, std::int64_t time);

/// The verdicts of the last 48 hours, or of another time, in time order, none at the same time as another. They follow
/// each other without a gap while the program runs.
///
/// Where two claim the same time because the clock was set back, the later arrival wins. Those stamped later than the
/// newest are kept, but not shown until the clock reaches them.
class VerdictHistory {
 public:
  /// Bounds the memory: a change every nine seconds for two days.
  static constexpr std::size_t kMostKept = 20'000;

  explicit VerdictHistory(std::int64_t kept_ms = History::kKeptMs, std::size_t most = kMostKept)
      : kept_ms_(kept_ms), most_(most) {}

  /// Adds `verdict`, or extends the one that came at the same time. The caller goes on with it until the next one
  /// comes.
  void Put(const RecordedVerdict& verdict);

  /// Adds stored verdicts, in time order, beneath those put since, which take precedence. `now` is the end of what is
  /// shown until a verdict comes.
  void Load(const std::vector<RecordedVerdict>& stored, std::int64_t now);

  /// From the first verdict to the last confirmation, no more than is kept, or nothing.
  [[nodiscard]] std::optional<TimeRange> Extent() const;

  /// Calls `visit(const RecordedVerdict&)` in time order for everything that touches `range`.
  template <typename Visitor>
  void Visit(TimeRange range, Visitor visit) const;

  /// Incremented by every change, but not where the newest verdict lasts longer.
  [[nodiscard]] std::uint64_t revision() const { return revision_; }

 private:
  void Thin();

  std::int64_t kept_ms_;
  std::size_t most_;
  std::deque<RecordedVerdict> verdicts_;
  std::int64_t latest_ = 0;  ///< the last confirmation, or the time of the load
  std::uint64_t revision_ = 0;
};

template <typename Visitor>
void VerdictHistory::Visit(TimeRange range, Visitor visit) const {
  const std::int64_t to = std::min(range.to, latest_);
  auto verdict = std::lower_bound(verdicts_.begin(), verdicts_.end(), range.from,
                                  [](const RecordedVerdict& v, std::int64_t time) { return v.last < time; });
  for (; verdict != verdicts_.end() && verdict->first <= to; ++verdict) visit(*verdict);
}

}  // namespace orvalis
