#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>

#include "station_watch.h"

namespace orvalis::indi {

/// The time since the system started, by the clock that counts sleep and that nobody sets.
[[nodiscard]] Moment Now();

/// A file descriptor that is closed at its end.
class Descriptor {
 public:
  explicit Descriptor(int number) : number_(number) {}
  ~Descriptor();
  Descriptor(const Descriptor&) = delete;
  Descriptor& operator=(const Descriptor&) = delete;
  [[nodiscard]] int number() const { return number_; }

 private:
  int number_;
};

/// What the driver waits for, as one descriptor on INDI's event loop. That loop watches for reading alone, where
/// connections also wait to write, and its timers know nothing of sleep.
class EventSet {
 public:
  using Handler = std::function<void(std::uint32_t events)>;

  /// Throws std::runtime_error when the system has no room for it.
  EventSet();
  ~EventSet();
  EventSet(const EventSet&) = delete;
  EventSet& operator=(const EventSet&) = delete;

  /// Calls `handler` while `descriptor` is ready for `events` (of epoll). A descriptor has one handler.
  void Watch(int descriptor, std::uint32_t events, Handler handler);
  void Forget(int descriptor);

 private:
  void Dispatch();

  Descriptor set_;
  std::map<int, std::shared_ptr<Handler>> handlers_;
  int callback_;
};

/// A timer by the clock of `Now`: one that ends during sleep is up at once on waking.
class Timer {
 public:
  Timer(EventSet& events, std::function<void()> up);
  ~Timer();
  Timer(const Timer&) = delete;
  Timer& operator=(const Timer&) = delete;

  /// Up at `moment`, also when that has passed, and then every `period` unless that is zero.
  void Start(Moment moment, Moment period = {});
  void Stop();

 private:
  EventSet& events_;
  Descriptor timer_;
};

}  // namespace orvalis::indi
