#include "platform/qt/qt_event_loop.h"

#include <algorithm>
#include <limits>
#include <utility>

#include "platform/system/boot_time.h"

namespace orvalis {

std::int64_t QtEventLoop::TickCount() const { return MillisecondsSinceBoot(); }

EventLoop::TimerId QtEventLoop::CallAfter(std::chrono::milliseconds delay, std::function<void()> call) {
  constexpr std::int64_t kLongest = std::numeric_limits<int>::max();
  const auto capped = std::chrono::milliseconds(std::clamp<std::int64_t>(delay.count(), 0, kLongest));
  // Precise: a pause of 20 ms that takes 21 costs a twentieth of the line's speed.
  const int id = startTimer(capped, Qt::PreciseTimer);
  calls_.emplace(id, std::move(call));
  return static_cast<TimerId>(id);
}

void QtEventLoop::Cancel(TimerId timer) {
  const int id = static_cast<int>(timer);
  if (calls_.erase(id) != 0) killTimer(id);
}

void QtEventLoop::timerEvent(QTimerEvent* event) {
  const auto found = calls_.find(event->timerId());
  if (found == calls_.end()) return;
  killTimer(event->timerId());
  // Taken out first: the call may set timers of its own.
  const std::function<void()> call = std::move(found->second);
  calls_.erase(found);
  call();
}

void QtIntervalTimer::SetInterval(std::chrono::milliseconds interval) {
  interval_ = interval;
  Restart();
}

void QtIntervalTimer::SetEnabled(bool enabled) {
  if (enabled == enabled_) return;
  enabled_ = enabled;
  Restart();
}

void QtIntervalTimer::timerEvent(QTimerEvent* /*event*/) { tick_(); }

void QtIntervalTimer::Restart() {
  if (timer_ != 0) killTimer(std::exchange(timer_, 0));
  // Coarse would do, but lets the ticks drift against each other; one precise timer a second costs nothing.
  if (enabled_ && interval_.count() > 0) timer_ = startTimer(interval_, Qt::PreciseTimer);
}

}  // namespace orvalis
