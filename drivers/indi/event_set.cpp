#include "event_set.h"

#include <indidevapi.h>
#include <sys/epoll.h>
#include <sys/timerfd.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <stdexcept>
#include <utility>

namespace orvalis::indi {
namespace {

timespec ToTimespec(Moment moment) {
  return {.tv_sec = moment.count() / 1'000, .tv_nsec = moment.count() % 1'000 * 1'000'000};
}

int OrThrow(int descriptor) {
  if (descriptor < 0) throw std::runtime_error("the system has no room for another file descriptor");
  return descriptor;
}

}  // namespace

Moment Now() {
  timespec now{};
  clock_gettime(CLOCK_BOOTTIME, &now);
  return std::chrono::seconds(now.tv_sec) + std::chrono::duration_cast<Moment>(std::chrono::nanoseconds(now.tv_nsec));
}

Descriptor::~Descriptor() { close(number_); }

EventSet::EventSet()
    : set_(OrThrow(epoll_create1(EPOLL_CLOEXEC))),
      callback_(IEAddCallback(
          set_.number(), [](int, void* events) { static_cast<EventSet*>(events)->Dispatch(); }, this)) {}

EventSet::~EventSet() { IERmCallback(callback_); }

void EventSet::Watch(int descriptor, std::uint32_t events, Handler handler) {
  epoll_event event{};
  event.events = events;
  event.data.fd = descriptor;
  // A descriptor that was closed has left the set by itself, and its number may have come back.
  if (epoll_ctl(set_.number(), EPOLL_CTL_MOD, descriptor, &event) != 0 && errno == ENOENT) {
    epoll_ctl(set_.number(), EPOLL_CTL_ADD, descriptor, &event);
  }
  handlers_[descriptor] = std::make_shared<Handler>(std::move(handler));
}

void EventSet::Forget(int descriptor) {
  epoll_ctl(set_.number(), EPOLL_CTL_DEL, descriptor, nullptr);
  handlers_.erase(descriptor);
}

void EventSet::Dispatch() {
  std::array<epoll_event, 8> ready{};
  const int count = epoll_wait(set_.number(), ready.data(), static_cast<int>(ready.size()), 0);
  for (int i = 0; i < count; ++i) {
    const epoll_event& event = ready[static_cast<std::size_t>(i)];
    const auto found = handlers_.find(event.data.fd);
    if (found == handlers_.end()) continue;                  // forgotten by a handler before it
    const std::shared_ptr<Handler> handler = found->second;  // it may be replaced meanwhile
    (*handler)(event.events);
  }
}

Timer::Timer(EventSet& events, std::function<void()> up)
    : events_(events), timer_(OrThrow(timerfd_create(CLOCK_BOOTTIME, TFD_CLOEXEC | TFD_NONBLOCK))) {
  events_.Watch(timer_.number(), EPOLLIN, [this, up = std::move(up)](std::uint32_t) {
    std::uint64_t times = 0;
    if (read(timer_.number(), &times, sizeof times) == sizeof times) up();
  });
}

Timer::~Timer() { events_.Forget(timer_.number()); }

void Timer::Start(Moment moment, Moment period) {
  // Zero would stop it.
  const itimerspec times{.it_interval = ToTimespec(period), .it_value = ToTimespec(std::max(moment, Moment(1)))};
  timerfd_settime(timer_.number(), TFD_TIMER_ABSTIME, &times, nullptr);
}

void Timer::Stop() {
  const itimerspec never{};
  timerfd_settime(timer_.number(), 0, &never, nullptr);
}

}  // namespace orvalis::indi
