#pragma once

#include <QObject>
#include <QTimerEvent>
#include <cstdint>
#include <functional>
#include <unordered_map>

#include "base/event_loop.h"
#include "base/interval_timer.h"

namespace orvalis {

/// The logic's timers on Qt's event loop. All of them end with this object.
class QtEventLoop : public QObject, public EventLoop {
  Q_OBJECT
 public:
  [[nodiscard]] std::int64_t TickCount() const override;
  TimerId CallAfter(std::chrono::milliseconds delay, std::function<void()> call) override;
  void Cancel(TimerId timer) override;

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  std::unordered_map<int, std::function<void()>> calls_;
};

/// A repeating timer on Qt's event loop.
class QtIntervalTimer : public QObject, public IntervalTimer {
  Q_OBJECT
 public:
  explicit QtIntervalTimer(std::function<void()> tick) : tick_(std::move(tick)) {}

  void SetInterval(std::chrono::milliseconds interval) override;
  void SetEnabled(bool enabled) override;

 protected:
  void timerEvent(QTimerEvent* event) override;

 private:
  void Restart();

  std::function<void()> tick_;
  std::chrono::milliseconds interval_{0};
  bool enabled_ = false;
  int timer_ = 0;
};

}  // namespace orvalis
