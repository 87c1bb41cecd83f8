#pragma once

#include <chrono>
#include <coroutine>
#include <cstdint>
#include <functional>
#include <limits>

#include "base/run_time_error.h"

namespace orvalis {

/// The event loop of the one thread, as the logic sees it.
class EventLoop {
 public:
  using TimerId = std::uint64_t;  ///< 0 is no timer

  virtual ~EventLoop() = default;

  /// Milliseconds since the system started, including time asleep. Never goes back.
  [[nodiscard]] virtual std::int64_t TickCount() const = 0;

  /// Calls `call` once from the loop, no earlier than after `delay`, unless cancelled.
  virtual TimerId CallAfter(std::chrono::milliseconds delay, std::function<void()> call) = 0;
  /// Cancels a timer; one that has fired or never existed is ignored.
  virtual void Cancel(TimerId timer) = 0;
};

/// The awaiter of `co_await Pause(…)`. Everything else goes on meanwhile; destroying the waiting coroutine cancels the
/// timer.
class [[nodiscard]] PauseAwaiter {
 public:
  PauseAwaiter(EventLoop& loop, std::chrono::milliseconds duration) : loop_(loop), duration_(duration) {}
  PauseAwaiter(const PauseAwaiter&) = delete;
  PauseAwaiter& operator=(const PauseAwaiter&) = delete;
  ~PauseAwaiter() {
    if (timer_ != 0) loop_.Cancel(timer_);
  }

  [[nodiscard]] bool await_ready() const noexcept { return duration_.count() <= 0; }
  void await_suspend(std::coroutine_handle<> waiting) {
    timer_ = loop_.CallAfter(duration_, [this, waiting] {
      timer_ = 0;
      waiting.resume();
    });
  }
  void await_resume() const noexcept {}

 private:
  EventLoop& loop_;
  std::chrono::milliseconds duration_;
  EventLoop::TimerId timer_ = 0;
};

/// Waits for `duration` without blocking. Throws RunTimeError kOverflow when the deadline exceeds the range of the tick
/// count.
inline PauseAwaiter Pause(EventLoop& loop, std::chrono::milliseconds duration) {
  if (duration.count() > std::numeric_limits<std::int64_t>::max() - loop.TickCount()) {
    throw RunTimeError(RunTimeError::kOverflow, "the end of a pause exceeds the range of the tick count");
  }
  return {loop, duration};
}

}  // namespace orvalis
