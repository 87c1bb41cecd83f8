#include "platform/system/stop_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>
#include <cerrno>
#include <csignal>
#include <stdexcept>
#include <utility>

namespace orvalis {
namespace {

constexpr std::array kStopSignals{SIGINT, SIGTERM, SIGHUP};

// A signal handler can use only globals: the writing and the reading end of a pipe to the event loop.
volatile int g_write_end = -1;
int g_read_end = -1;

void TellEventLoop(int /*signal*/) {
  const int saved = errno;
  const char byte = 0;
  // If the pipe is full the loop has already been notified.
  [[maybe_unused]] const ssize_t written = write(g_write_end, &byte, 1);
  errno = saved;
}

volatile int g_exit_code = 0;

void EndProcess(int /*signal*/) { _exit(g_exit_code); }

/// Who started the program may have had it ignored: `nohup` a closed terminal, a script Ctrl-C for what it runs in the
/// background.
bool IsToBeIgnored(int signal) {
  struct sigaction action {};
  return signal != SIGTERM && sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

void Install(void (*handler)(int)) {
  struct sigaction action {};
  action.sa_handler = handler;
  action.sa_flags = SA_RESTART;
  for (const int signal : kStopSignals) {
    if (!IsToBeIgnored(signal)) sigaction(signal, &action, nullptr);
  }
}

void Mask(int how) {
  sigset_t set;
  sigemptyset(&set);
  for (const int signal : kStopSignals) sigaddset(&set, signal);
  sigprocmask(how, &set, nullptr);
}

/// Signals are held back until `main` knows what the program is to do.
void HoldBack(int /*argc*/, char** /*argv*/, char** /*environment*/) { Mask(SIG_BLOCK); }

// The system calls this before it prepares the libraries, which takes most of the time until `main`.
[[gnu::section(".preinit_array"), gnu::used]] void (*const kHoldBack)(int, char**, char**) = HoldBack;

}  // namespace

class StopSignals::Watch : public QObject {
 public:
  explicit Watch(std::function<void()> stop) : stop_(std::move(stop)) {
    std::array<int, 2> ends{};
    if (pipe2(ends.data(), O_CLOEXEC | O_NONBLOCK) != 0) throw std::runtime_error("no pipe for the stop signals");
    g_read_end = ends[0];
    g_write_end = ends[1];
    auto* notifier = new QSocketNotifier(g_read_end, QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
      std::array<char, 16> bytes{};
      [[maybe_unused]] const ssize_t count = read(g_read_end, bytes.data(), bytes.size());
      stop_();
    });
    Install(TellEventLoop);
  }
  ~Watch() override {
    Install(EndProcess);
    close(std::exchange(g_read_end, -1));
    close(g_write_end);
    g_write_end = -1;
  }

 private:
  std::function<void()> stop_;
};

// The end of a session arrives as an ordinary signal; the session waits.
StopSignals::StopSignals(Calls calls) : watch_(std::make_unique<Watch>(std::move(calls.stop))) {}

StopSignals::~StopSignals() = default;

void StopSignals::ExitImmediately(int exit_code) {
  g_exit_code = exit_code;
  Install(EndProcess);
  Mask(SIG_UNBLOCK);
}

void StopSignals::RestoreDefault() {
  Install(SIG_DFL);
  Mask(SIG_UNBLOCK);
}

}  // namespace orvalis
