#include "history/history.h"

#include <iterator>
#include <utility>

namespace orvalis {
namespace {

bool SampleAfter(std::int64_t time, const Sample& sample) { return time < sample.time; }

}  // namespace

void History::Add(const Sample& sample) {
  const std::int64_t time = sample.time;
  // A sample that closely follows the last one claims the time between them; after a gap only its own moment.
  const bool follows = has_sample_ && time > *latest_ && time - *latest_ <= kLongestStepMs;
  const std::int64_t claimed = follows ? *latest_ : time - 1;
  while (!spans_.empty() && spans_.back().last > claimed) spans_.pop_back();
  const auto begin = std::upper_bound(samples_.begin(), samples_.end(), claimed, SampleAfter);
  const auto end = std::upper_bound(begin, samples_.end(), time, SampleAfter);
  samples_.insert(samples_.erase(begin, end), sample);
  latest_ = time;
  has_sample_ = true;
  ++revision_;
  Thin();
}

void History::Load(const std::vector<Span>& spans, const std::vector<Sample>& samples, std::int64_t now) {
  std::deque<Span> stored_spans;
  for (const Span& span : spans) {
    if (stored_spans.empty() || span.first > stored_spans.back().last) stored_spans.push_back(span);
  }
  std::deque<Sample> stored;
  for (const Sample& sample : samples) {
    const bool in_order = stored.empty() || sample.time > stored.back().time;
    const bool after_spans = stored_spans.empty() || sample.time > stored_spans.back().last;
    if (in_order && after_spans) stored.push_back(sample);
  }
  // Few samples arrived while the store was opened; they are added one by one.
  const std::deque<Sample> added = std::exchange(samples_, std::move(stored));
  spans_ = std::move(stored_spans);
  latest_ = now;
  has_sample_ = false;
  ++revision_;
  Thin();
  for (const Sample& sample : added) Add(sample);
}

void History::Thin() {
  while (!samples_.empty() && samples_.front().time < *latest_ - kUnthinnedMs) {
    if (spans_.empty() || !Absorb(spans_.back(), samples_.front())) spans_.push_back(SpanOf(samples_.front()));
    samples_.pop_front();
  }
  while (!spans_.empty() && spans_.front().last < *latest_ - kept_ms_) spans_.pop_front();
  // Too far ahead to wait for the clock.
  while (!samples_.empty() && samples_.back().time > *latest_ + kUnthinnedMs) samples_.pop_back();
  while (spans_.size() > kMostKept) spans_.pop_front();
  while (samples_.size() > kMostKept) samples_.pop_front();
}

std::optional<TimeRange> History::Extent() const {
  const auto end = latest_ ? std::upper_bound(samples_.begin(), samples_.end(), *latest_, SampleAfter) : samples_.end();
  if (spans_.empty() && end == samples_.begin()) return std::nullopt;
  const std::int64_t from = spans_.empty() ? samples_.front().time : spans_.front().first;
  const std::int64_t to = end == samples_.begin() ? spans_.back().last : std::prev(end)->time;
  return TimeRange{.from = from, .to = to};
}

std::optional<Span> History::Nearest(std::int64_t time, std::int64_t within) const {
  std::optional<Span> nearest;
  std::int64_t distance = within;
  Visit({.from = time, .to = time}, [&](const Span& span) {
    const std::int64_t away = time < span.first ? span.first - time : (time > span.last ? time - span.last : 0);
    if (away > distance) return;
    distance = away;
    nearest = span;
  });
  return nearest;
}

}  // namespace orvalis
