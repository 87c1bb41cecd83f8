#include "history/past_reader.h"

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

#include "base/run_time_error.h"
#include "history/merging.h"

namespace orvalis {
namespace {

/// Some milliseconds of work.
constexpr std::size_t kRowsAtOnce = 2'000;
/// Whoever turns the wheel asks again within this time.
constexpr std::chrono::milliseconds kBeforeFirst{40};
/// Leaves time for everything else.
constexpr std::chrono::milliseconds kBetween{2};

}  // namespace

struct PastReader::Job {
  Job(const Request& wanted, Done call)
      : request(wanted),
        done(std::move(call)),
        spans(wanted.column_ms),
        verdicts(wanted.column_ms),
        // One that began before reaches into the range.
        next_span(wanted.range.from - kSpanMs),
        next_verdict(wanted.range.from),
        values_left(wanted.values) {}

  Request request;
  Done done;
  SpanMerger spans;
  VerdictMerger verdicts;
  std::int64_t next_span;
  std::int64_t next_verdict;
  std::int64_t last_verdict = std::numeric_limits<std::int64_t>::min();
  bool values_left;

  [[nodiscard]] Past Finish() {
    const std::int64_t kept = request.range.to - request.range.from + kSpanMs + request.column_ms;
    Past past{.range = request.range,
              .column_ms = request.column_ms,
              .history = History(kept),
              .verdicts = VerdictHistory(kept, HistoryStore::kMostVerdicts)};
    past.history.Load(spans.Take(), {}, request.range.to);
    past.verdicts.Load(verdicts.Take(), request.range.to);
    return past;
  }
};

PastReader::PastReader(const Parts& parts) : parts_(parts) {}

PastReader::~PastReader() { Stop(); }

void PastReader::Read(const Request& request, Done done) {
  Stop();
  job_ = std::make_unique<Job>(request, std::move(done));
  Wait(kBeforeFirst);
}

void PastReader::Stop() {
  parts_.loop.Cancel(std::exchange(timer_, 0));
  job_.reset();
}

const PastReader::Request* PastReader::request() const { return job_ ? &job_->request : nullptr; }

void PastReader::Wait(std::chrono::milliseconds delay) {
  timer_ = parts_.loop.CallAfter(delay, [this] {
    timer_ = 0;
    Step();
  });
}

void PastReader::Step() {
  try {
    if (!ReadSome()) {
      Wait(kBetween);
      return;
    }
  } catch (const RunTimeError& error) {
    std::exchange(job_, nullptr)->done(std::string(error.what()));
    return;
  }
  const std::unique_ptr<Job> job = std::move(job_);
  job->done(job->Finish());
}

bool PastReader::ReadSome() {
  const std::int64_t to = job_->request.range.to;
  if (job_->values_left) {
    const std::vector<Span> spans = parts_.store.Spans(job_->next_span, to, kRowsAtOnce);
    for (const Span& span : spans) job_->spans.Add(span);
    job_->values_left = spans.size() == kRowsAtOnce;
    if (job_->values_left) job_->next_span = spans.back().first + 1;
    return false;
  }
  const std::vector<RecordedVerdict> verdicts = parts_.store.Verdicts(job_->next_verdict, to, kRowsAtOnce);
  for (const RecordedVerdict& verdict : verdicts) {
    // The last one may come again, because it reaches beyond its beginning.
    if (verdict.first <= job_->last_verdict) continue;
    job_->last_verdict = verdict.first;
    job_->verdicts.Add(verdict);
  }
  if (verdicts.size() < kRowsAtOnce) return true;
  job_->next_verdict = verdicts.back().first + 1;
  return false;
}

}  // namespace orvalis
