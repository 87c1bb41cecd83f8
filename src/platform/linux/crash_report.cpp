#include "platform/system/crash_report.h"

#include <execinfo.h>
#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstring>
#include <ctime>
#include <memory>
#include <string_view>

#include "base/clock.h"
#include "logs/crash_note.h"
#include "logs/error_log.h"

namespace orvalis::crash_report {
namespace {

#ifdef __SANITIZE_ADDRESS__
constexpr bool kSanitized = true;
#else
constexpr bool kSanitized = false;
#endif

struct Fault {
  int signal;
  std::string_view name;
};
constexpr std::array kFaults{Fault{SIGSEGV, "SIGSEGV, a bad address"}, Fault{SIGBUS, "SIGBUS, a bad address"},
                             Fault{SIGILL, "SIGILL, a bad instruction"}, Fault{SIGFPE, "SIGFPE, a division"},
                             Fault{SIGABRT, "SIGABRT, the program gave up"}};

/// A line made without memory of its own: the fault may be in what gives memory out.
class Line {
 public:
  Line& operator<<(std::string_view text) {
    for (const char c : text) {
      if (size_ < bytes_.size()) bytes_[size_++] = c;
    }
    return *this;
  }
  /// With leading zeros.
  Line& Number(int value, int digits) {
    int unit = 1;
    for (int i = 1; i < digits; ++i) unit *= 10;
    for (; unit > 0; unit /= 10)
      *this << std::string_view("0123456789").substr(static_cast<std::size_t>(value / unit % 10), 1);
    return *this;
  }
  [[nodiscard]] std::string_view text() const { return {bytes_.data(), size_}; }

 private:
  std::array<char, 160> bytes_{};
  std::size_t size_ = 0;
};

using Path = std::array<char, 4096>;

// A signal handler can use only globals. They are written once, before it is installed.
Path g_log{};
Path g_note{};

void Append(const Path& path, std::string_view line, const std::array<void*, 64>& frames, int count) {
  // A log that is a pipe would be waited for.
  const int file = open(path.data(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC | O_NONBLOCK, S_IRUSR | S_IWUSR);
  if (file < 0) return;
  [[maybe_unused]] const ssize_t written = write(file, line.data(), line.size());
  backtrace_symbols_fd(frames.data(), count, file);
  close(file);
}

/// Uses only what a signal handler may, and `backtrace`, which may after its first call.
void Report(int signal) {
  constexpr unsigned kPatience = 10;
  std::signal(SIGALRM, SIG_DFL);
  alarm(kPatience);  // whatever the fault has left locked, this ends
  std::array<void*, 64> frames{};
  const int count = backtrace(frames.data(), static_cast<int>(frames.size()));
  const CivilTime now = TimeAt(static_cast<std::int64_t>(std::time(nullptr)) * 1'000);
  const auto* const fault = std::ranges::find(kFaults, signal, &Fault::signal);
  Line line;
  line.Number(now.year, 4) << "-";
  line.Number(now.month, 2) << "-";
  line.Number(now.day, 2) << "T";
  line.Number(now.hour, 2) << ":";
  line.Number(now.minute, 2) << ":";
  line.Number(now.second, 2) << "Z  a fault ended the program (version " ORVALIS_VERSION "): ";
  line << (fault != kFaults.end() ? fault->name : "a signal") << "\n";
  Append(g_log, line.text(), frames, count);
  Append(g_note, line.text(), frames, count);
  raise(signal);  // it has its default effect again
}

bool Keep(const std::filesystem::path& file, Path& path) {
  const std::string& name = file.native();
  if (name.size() >= path.size()) return false;
  std::ranges::copy(name, path.begin());
  return true;
}

}  // namespace

void EmptyDumps() {
  const int filter = open("/proc/self/coredump_filter", O_WRONLY | O_CLOEXEC);
  if (filter < 0) return;
  [[maybe_unused]] const ssize_t written = write(filter, "0", 1);
  close(filter);
}

void Arm(const std::filesystem::path& folder) {
  if (kSanitized) return;
  if (!Keep(folder / kErrorLogFile, g_log) || !Keep(folder / kCrashNoteFile, g_note)) return;
  std::array<void*, 1> first{};
  static_cast<void>(backtrace(first.data(), 1));  // the first call loads a library
  // The fault may be that the stack is full.
  constexpr std::size_t kStack = 65'536;
  static const auto stack = std::make_unique<std::array<char, kStack>>();
  const stack_t own{.ss_sp = stack->data(), .ss_flags = 0, .ss_size = stack->size()};
  sigaltstack(&own, nullptr);
  struct sigaction action {};
  action.sa_handler = Report;
  action.sa_flags = static_cast<int>(SA_RESETHAND | SA_ONSTACK | SA_NODEFER);
  for (const Fault& fault : kFaults) sigaction(fault.signal, &action, nullptr);
}

}  // namespace orvalis::crash_report
