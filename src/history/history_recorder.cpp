#include "history/history_recorder.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

/// Half a day of working cycles is kept for a store that does not accept them; then the oldest are dropped.
constexpr std::size_t kMostPending = 21'600;
/// How much the clock may drift or be corrected in an hour.
constexpr std::int64_t kClockTrustedMs = 60'000;
/// Long enough for the window to appear first.
constexpr std::chrono::milliseconds kLoadDelay{400};

template <typename Entry>
void KeepNewest(std::vector<Entry>& entries) {
  if (entries.size() <= kMostPending) return;
  entries.erase(entries.begin(), entries.end() - static_cast<std::ptrdiff_t>(kMostPending));
}

}  // namespace

HistoryRecorder::~HistoryRecorder() {
  parts_.loop.Cancel(batch_timer_);
  parts_.loop.Cancel(load_timer_);
}

std::int64_t HistoryRecorder::Now() const { return UtcMilliseconds(parts_.clock.UtcNow()); }

void HistoryRecorder::LoadSoon() {
  load_timer_ = parts_.loop.CallAfter(kLoadDelay, [this] { Load(); });
}

void HistoryRecorder::Load() {
  load_timer_ = 0;
  const std::int64_t now = Now();
  load_failed_ = !Try([&] {
    // Without a history in memory nothing is loaded, but the store is still checked.
    const std::int64_t kept = parts_.remember ? History::kKeptMs : 0;
    const std::int64_t unthinned = parts_.remember ? History::kUnthinnedMs : 0;
    const HistoryStore::Part part = parts_.store.Load(now - kept, now - unthinned, now + unthinned);
    real_.Load(part.spans, part.samples, now);
    if (parts_.remember) verdicts_.Load(part.verdicts, now);
    if (replaced_) replaced_();
  });
}

void HistoryRecorder::Remember() {
  if (std::exchange(parts_.remember, true)) return;
  Flush();
  if (load_timer_ == 0) Load();
}

void HistoryRecorder::Note(const WeatherState& weather, const SensorFrame& frame) {
  const Sample sample = SampleOf(weather, frame, Now());
  if (parts_.remember) (weather.from_demo ? demo_ : real_).Add(sample);
  if (!weather.from_demo) NoteForStore(sample);
  if (std::exchange(demo_shown_, weather.from_demo) != weather.from_demo && replaced_) replaced_();
}

void HistoryRecorder::NoteForStore(const Sample& sample) {
  if (pending_.samples.empty()) pending_.follows = last_time_;
  pending_.samples.push_back(sample);
  last_time_ = sample.time;
  if (!open_span_ || !Absorb(*open_span_, sample)) {
    if (open_span_) pending_.spans.push_back(*open_span_);
    open_span_ = SpanOf(sample);
  }
  KeepNewest(pending_.samples);
  KeepNewest(pending_.spans);
  if (!forgotten_at_) forgotten_at_ = CurrentInstant();
  StartTimer();
}

void HistoryRecorder::NoteVerdict(const Observation& now) {
  std::int64_t time = now.time;
  bool begins = !open_verdict_ || !now.verdict.SameAs(noted_);
  if (open_verdict_) {
    if (std::abs(time - open_verdict_->last) <= kLongestStepMs) {
      // A clock that was put right by a moment changes no order.
      time = std::max(time, open_verdict_->last);
      if (begins) time = std::max(time, open_verdict_->first + 1);
      open_verdict_->last = time;
      PutVerdict();
    } else {
      begins = true;  // the machine slept, or the clock was set: nothing is known of the time between
    }
  }
  if (begins) {
    if (open_verdict_) pending_.verdicts.push_back(*open_verdict_);
    KeepNewest(pending_.verdicts);
    noted_ = now.verdict;
    open_verdict_ = RecordOf(now, time);
    PutVerdict();
  }
  if (!forgotten_at_) forgotten_at_ = CurrentInstant();
  StartTimer();
}

void HistoryRecorder::PutVerdict() {
  if (parts_.remember) verdicts_.Put(*open_verdict_);
}

void HistoryRecorder::StartTimer() {
  if (batch_timer_ != 0) return;
  batch_timer_ = parts_.loop.CallAfter(kBatchInterval, [this] {
    batch_timer_ = 0;
    if (!WriteBatch()) StartTimer();
  });
}

bool HistoryRecorder::WriteBatch() {
  const bool written = Try([this] {
    HistoryStore::Batch batch = pending_;
    if (open_span_) batch.spans.push_back(*open_span_);
    if (open_verdict_) batch.verdicts.push_back(*open_verdict_);
    parts_.store.Write(batch);
  });
  if (!written) return false;
  pending_ = {};
  ForgetOld();
  if (load_failed_) Load();
  return true;
}

HistoryRecorder::Instant HistoryRecorder::CurrentInstant() const {
  return {.tick = parts_.loop.TickCount(), .time = Now()};
}

void HistoryRecorder::ForgetOld() {
  // Not in the first hour: by then a clock that was wrong at boot is correct.
  constexpr std::int64_t kInterval = History::kHourMs;
  const Instant now = CurrentInstant();
  if (!forgotten_at_ || now.tick - forgotten_at_->tick < kInterval) return;
  const std::int64_t clock_set_by = (now.time - forgotten_at_->time) - (now.tick - forgotten_at_->tick);
  forgotten_at_ = now;
  // A clock that was set within this hour may be wrong; one that is ahead would delete everything.
  if (std::abs(clock_set_by) > kClockTrustedMs) return;
  Try([&] { parts_.store.Forget(now.time - kSamplesStoredMs, now.time - kSpansStoredMs); });
}

void HistoryRecorder::Flush() {
  if (batch_timer_ == 0 || !WriteBatch()) return;
  parts_.loop.Cancel(std::exchange(batch_timer_, 0));
}

template <typename Work>
bool HistoryRecorder::Try(Work work) {
  try {
    work();
  } catch (const RunTimeError& error) {
    if (trouble_.IsNews(error.what())) parts_.report(error.what());
    return false;
  }
  if (trouble_.Mended()) parts_.report("the history is being stored again");
  return true;
}

}  // namespace orvalis
