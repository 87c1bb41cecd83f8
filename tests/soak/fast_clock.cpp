// Loaded before the system's library: all clocks run FAST_CLOCK times as fast, and waits with an end are as much
// shorter. It allocates nothing, so that a heap profiler can be loaded beside it.

#include <poll.h>
#include <sys/select.h>
#include <sys/syscall.h>
#include <sys/time.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <ctime>

namespace {

constexpr std::int64_t kSecond = 1'000'000'000;

std::int64_t Nanoseconds(const timespec& time) { return time.tv_sec * kSecond + time.tv_nsec; }
timespec TimeOf(std::int64_t nanoseconds) { return {nanoseconds / kSecond, nanoseconds % kSecond}; }

std::int64_t Real(clockid_t clock) {
  timespec now{};
  syscall(SYS_clock_gettime, clock, &now);
  return Nanoseconds(now);
}

struct Pace {
  std::int64_t factor = std::getenv("FAST_CLOCK") == nullptr ? 1 : std::atoll(std::getenv("FAST_CLOCK"));
  std::int64_t begin = Real(CLOCK_MONOTONIC);
};

const Pace& ThePace() {
  static const Pace pace;
  return pace;
}

/// Waits for `most`, which is null for as long as it takes, by the fast clocks.
int Wait(pollfd* files, nfds_t count, const timespec* most, const sigset_t* signals) {
  timespec shorter = TimeOf(most == nullptr ? 0 : Nanoseconds(*most) / ThePace().factor);
  return static_cast<int>(
      syscall(SYS_ppoll, files, count, most == nullptr ? nullptr : &shorter, signals, sizeof(std::uint64_t)));
}

}  // namespace

extern "C" int clock_gettime(clockid_t clock, timespec* now) noexcept {
  const auto result = static_cast<int>(syscall(SYS_clock_gettime, clock, now));
  const bool of_processor = clock == CLOCK_PROCESS_CPUTIME_ID || clock == CLOCK_THREAD_CPUTIME_ID;
  if (result != 0 || of_processor) return result;
  const std::int64_t passed = Real(CLOCK_MONOTONIC) - ThePace().begin;
  *now = TimeOf(Nanoseconds(*now) + passed * (ThePace().factor - 1));
  return result;
}

extern "C" int gettimeofday(timeval* now, void*) noexcept {
  timespec exact{};
  const int result = clock_gettime(CLOCK_REALTIME, &exact);
  *now = {exact.tv_sec, exact.tv_nsec / 1000};
  return result;
}

extern "C" time_t time(time_t* kept) noexcept {
  timespec now{};
  clock_gettime(CLOCK_REALTIME, &now);
  if (kept != nullptr) *kept = now.tv_sec;
  return now.tv_sec;
}

extern "C" int poll(pollfd* files, nfds_t count, int milliseconds) {
  const timespec most = TimeOf(milliseconds * std::int64_t{1'000'000});
  return Wait(files, count, milliseconds < 0 ? nullptr : &most, nullptr);
}

extern "C" int ppoll(pollfd* files, nfds_t count, const timespec* most, const sigset_t* signals) {
  return Wait(files, count, most, signals);
}

extern "C" int nanosleep(const timespec* wanted, timespec*) { return Wait(nullptr, 0, wanted, nullptr); }

extern "C" int clock_nanosleep(clockid_t clock, int flags, const timespec* wanted, timespec*) {
  timespec left = *wanted;
  if ((flags & TIMER_ABSTIME) != 0) {
    timespec now{};
    clock_gettime(clock, &now);
    if (Nanoseconds(*wanted) <= Nanoseconds(now)) return 0;
    left = TimeOf(Nanoseconds(*wanted) - Nanoseconds(now));
  }
  return Wait(nullptr, 0, &left, nullptr) < 0 ? errno : 0;
}
