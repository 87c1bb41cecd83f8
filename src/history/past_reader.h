#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <variant>

#include "base/event_loop.h"
#include "history/history.h"
#include "history/history_store.h"
#include "history/verdict_history.h"

namespace orvalis {

/// A stretch of the store.
struct Past {
  TimeRange range;
  std::int64_t column_ms = 0;  ///< the width of the columns into which it is merged, 0 if it is not
  History history;
  VerdictHistory verdicts;
};

/// Reads stretches of the store, however long, a little at a time: four hundred days take a second or more, in which
/// everything else goes on.
class PastReader {
 public:
  struct Parts {
    EventLoop& loop;
    HistoryStore& store;
  };
  struct Request {
    TimeRange range;
    std::int64_t column_ms = 0;
    bool values = true;  ///< or the verdicts alone
  };
  /// What was read, or why it could not be.
  using Result = std::variant<Past, std::string>;
  using Done = std::function<void(Result result)>;

  explicit PastReader(const Parts& parts);
  PastReader(const PastReader&) = delete;
  PastReader& operator=(const PastReader&) = delete;
  ~PastReader();

  /// Calls `done` later, unless another request or `Stop` comes first: whoever moves through a picture asks often, and
  /// only the last one counts.
  void Read(const Request& request, Done done);
  void Stop();

  /// What is being read, or nothing.
  [[nodiscard]] const Request* request() const;
  /// When the store's contents begin, or nothing. Throws RunTimeError.
  [[nodiscard]] std::optional<std::int64_t> Begin() const { return parts_.store.Begin(); }

 private:
  struct Job;

  void Wait(std::chrono::milliseconds delay);
  void Step();
  /// Reads some more; returns whether that was all.
  [[nodiscard]] bool ReadSome();

  Parts parts_;
  std::unique_ptr<Job> job_;
  EventLoop::TimerId timer_ = 0;
};

}  // namespace orvalis
