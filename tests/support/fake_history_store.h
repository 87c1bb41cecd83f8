#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "base/run_time_error.h"
#include "history/history_store.h"

namespace orvalis::test {

/// A store that writes down what it is given, holds what the test puts into it, and fails when the test wants.
class FakeHistoryStore : public HistoryStore {
 public:
  Part Load(std::int64_t /*spans_from*/, std::int64_t samples_from, std::int64_t to) override {
    Fail();
    loaded_from = samples_from;
    loaded_to = to;
    return {};
  }
  std::optional<std::int64_t> Begin() override {
    Fail();
    return kept_spans.empty() ? std::nullopt : std::optional(kept_spans.front().first);
  }
  std::vector<Span> Spans(std::int64_t from, std::int64_t to, std::size_t most) override {
    Fail();
    most_spans = std::max(most_spans, most);
    std::vector<Span> spans;
    for (const Span& span : kept_spans) {
      if (span.first >= from && span.first < to && spans.size() < most) spans.push_back(span);
    }
    return spans;
  }
  std::vector<RecordedVerdict> Verdicts(std::int64_t from, std::int64_t to, std::size_t most) override {
    Fail();
    std::vector<RecordedVerdict> verdicts;
    for (const RecordedVerdict& verdict : kept_verdicts) {
      if (verdict.last >= from && verdict.first <= to && verdicts.size() < most) verdicts.push_back(verdict);
    }
    return verdicts;
  }
  void Write(const Batch& batch) override {
    Fail();
    batches.push_back(batch);
  }
  void Forget(std::int64_t samples_before, std::int64_t spans_before) override {
    Fail();
    forgotten.emplace_back(samples_before, spans_before);
  }
  void Fail() const {
    if (fails) throw RunTimeError(RunTimeError::kPathFileAccess, "cannot store the history: disk full");
  }

  bool fails = false;
  std::int64_t loaded_from = 0;
  std::int64_t loaded_to = 0;
  std::vector<Batch> batches;
  std::vector<Span> kept_spans;
  std::size_t most_spans = 0;  ///< asked for at once
  std::vector<RecordedVerdict> kept_verdicts;
  std::vector<std::pair<std::int64_t, std::int64_t>> forgotten;
};

}  // namespace orvalis::test
