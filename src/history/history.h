#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <optional>
#include <vector>

#include "history/sample.h"

namespace orvalis {

/// From `from` to `to`, both included, in milliseconds since 1970-01-01 UTC.
struct TimeRange {
  std::int64_t from = 0;
  std::int64_t to = 0;
  bool operator==(const TimeRange&) const = default;
};

/// The last 48 hours of working cycles, or another time, in time order: the last 24 hours unchanged, older ones merged
/// into spans that keep the lowest and the highest value. About three megabytes when full.
///
/// The clock may jump. Where two samples claim the same time because the clock was set back, the later arrival wins.
/// Samples stamped later than the last one are kept, because a machine may start with a slow clock and correct older
/// stamps, but are not shown until the clock reaches them.
class History {
 public:
  static constexpr std::int64_t kHourMs = 3'600'000;
  static constexpr std::int64_t kKeptMs = 48 * kHourMs;
  static constexpr std::int64_t kUnthinnedMs = 24 * kHourMs;

  explicit History(std::int64_t kept_ms = kKeptMs) : kept_ms_(kept_ms) {}

  void Add(const Sample& sample);

  /// Adds stored data beneath the samples added since, which take precedence. Both are in time order. `now` is the end
  /// of what is shown until a sample arrives.
  void Load(const std::vector<Span>& spans, const std::vector<Sample>& samples, std::int64_t now);

  /// From the first sample to the last, or nothing.
  [[nodiscard]] std::optional<TimeRange> Extent() const;

  /// Calls `visit(const Span&)` in time order for everything that touches `range` and for the neighbours on either
  /// side, so that a curve can reach the edges.
  template <typename Visitor>
  void Visit(TimeRange range, Visitor visit) const;

  /// The entry nearest to `time`, at most `within` milliseconds away.
  [[nodiscard]] std::optional<Span> Nearest(std::int64_t time, std::int64_t within) const;

  /// Incremented by every change.
  [[nodiscard]] std::uint64_t revision() const { return revision_; }
  /// The number of samples and spans.
  [[nodiscard]] std::size_t size() const { return spans_.size() + samples_.size(); }

 private:
  /// Bounds the memory in any case; 48 hours of cycles two seconds apart stay below it.
  static constexpr std::size_t kMostKept = 100'000;

  void Thin();

  std::int64_t kept_ms_;
  std::deque<Span> spans_;
  std::deque<Sample> samples_;          ///< all later than the spans
  std::optional<std::int64_t> latest_;  ///< time of the last sample, or of the load
  bool has_sample_ = false;             ///< `latest_` is the time of a sample
  std::uint64_t revision_ = 0;
};

template <typename Visitor>
void History::Visit(TimeRange range, Visitor visit) const {
  if (!latest_) return;
  const auto sample_after = [](std::int64_t time, const Sample& sample) { return time < sample.time; };
  const auto end = std::upper_bound(samples_.begin(), samples_.end(), *latest_, sample_after);
  auto sample = std::lower_bound(samples_.begin(), end, range.from,
                                 [](const Sample& s, std::int64_t time) { return s.time < time; });
  auto span = std::lower_bound(spans_.begin(), spans_.end(), range.from,
                               [](const Span& s, std::int64_t time) { return s.last < time; });
  if (sample != samples_.begin()) {
    --sample;
    span = spans_.end();
  } else if (span != spans_.begin()) {
    --span;
  }
  for (; span != spans_.end(); ++span) {
    visit(*span);
    if (span->first > range.to) return;
  }
  for (; sample != end; ++sample) {
    visit(SpanOf(*sample));
    if (sample->time > range.to) return;
  }
}

}  // namespace orvalis
