#pragma once

#include <map>
#include <utility>

#include "base/clock.h"
#include "base/event_loop.h"
#include "base/interval_timer.h"

namespace orvalis::test {

/// An event loop whose time passes only when the test says so.
class FakeEventLoop : public EventLoop {
 public:
  [[nodiscard]] std::int64_t TickCount() const override { return now_; }

  TimerId CallAfter(std::chrono::milliseconds delay, std::function<void()> call) override {
    timers_.emplace(std::pair{now_ + delay.count(), ++last_id_}, std::move(call));
    return last_id_;
  }

  void Cancel(TimerId timer) override {
    std::erase_if(timers_, [&](const auto& entry) { return entry.first.second == timer; });
  }

  /// Lets `duration` pass and fires, in order, what falls due.
  void Advance(std::chrono::milliseconds duration) {
    const std::int64_t end = now_ + duration.count();
    while (!timers_.empty() && timers_.begin()->first.first <= end) {
      auto timer = timers_.extract(timers_.begin());
      now_ = std::max(now_, timer.key().first);  // behind a sleep it is overdue
      timer.mapped()();
    }
    now_ = end;
  }

  /// The machine slept: time passed and no timer fired.
  void Sleep(std::chrono::milliseconds duration) { now_ += duration.count(); }

  [[nodiscard]] std::size_t waiting() const { return timers_.size(); }

 private:
  std::int64_t now_ = 1'000'000;
  TimerId last_id_ = 0;
  std::map<std::pair<std::int64_t, TimerId>, std::function<void()>> timers_;
};

class FakeClock : public Clock {
 public:
  [[nodiscard]] CivilTime LocalNow() const override { return now; }
  [[nodiscard]] CivilTime UtcNow() const override { return now; }
  [[nodiscard]] CivilTime LocalAt(std::int64_t milliseconds) const override { return TimeAt(milliseconds); }

  CivilTime now{.year = 2026, .month = 11, .day = 21, .hour = 21, .minute = 4, .second = 5};
};

class FakeTimer : public IntervalTimer {
 public:
  void SetInterval(std::chrono::milliseconds value) override { interval = value; }
  void SetEnabled(bool value) override { enabled = value; }

  std::chrono::milliseconds interval{0};
  bool enabled = false;
};

}  // namespace orvalis::test
