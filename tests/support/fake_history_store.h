#pragma once

#include <utility>
#include <vector>

#include "base/run_time_error.h"
#include "history/history_store.h"

namespace orvalis::test {

/// A store that writes down what it is given, holds nothing, and fails when the test wants.
class FakeHistoryStore : public HistoryStore {
 public:
  Part Load(std::int64_t /*spans_from*/, std::int64_t samples_from, std::int64_t to) override {
    Fail();
    loaded_from = samples_from;
    loaded_to = to;
    return {};
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
  std::vector<std::pair<std::int64_t, std::int64_t>> forgotten;
};

}  // namespace orvalis::test
