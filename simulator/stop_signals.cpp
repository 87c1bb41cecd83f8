#include "stop_signals.h"

#include <array>

namespace orvalis_unit {
namespace {

constexpr std::array<int, 3> kSignals = {SIGINT, SIGTERM, SIGHUP};

volatile sig_atomic_t has_arrived = 0;

void Note(int) { has_arrived = 1; }

// By who started the program: nohup, or a script that runs it in the background.
bool IsToBeIgnored(int number) {
  struct sigaction action {};
  return number != SIGTERM && sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

}  // namespace

StopSignals::StopSignals() {
  has_arrived = 0;
  sigset_t held{};
  sigemptyset(&held);
  for (const int number : kSignals) {
    if (IsToBeIgnored(number)) continue;
    sigaddset(&held, number);
    struct sigaction action {};
    action.sa_handler = Note;
    sigaction(number, &action, nullptr);
  }
  sigprocmask(SIG_BLOCK, &held, &outside_);
  // A parent process may have passed these on blocked.
  for (const int number : kSignals) sigdelset(&outside_, number);
}

StopSignals::~StopSignals() {
  for (const int number : kSignals) {
    if (!IsToBeIgnored(number)) signal(number, SIG_DFL);
  }
  sigprocmask(SIG_SETMASK, &outside_, nullptr);
}

bool StopSignals::Arrived() { return has_arrived != 0; }

}  // namespace orvalis_unit
