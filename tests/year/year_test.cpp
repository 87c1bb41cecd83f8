// Runs a year of the whole program in about two minutes, with a unit that damages and delays its answers, is switched
// off for hours and loses its cable, a clock that jumps, a machine that sleeps, clients, and a broker that comes and
// goes.
//   year_test [--days N] [--tick SECONDS]
// A tick stands for one second of the program's timers; with 4 seconds it asks for a frame every eight: a reading lasts
// ten. Prints figures, and what is wrong.

#include <malloc.h>

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <span>

#include "tests/year/year_world.h"

namespace orvalis::test {
namespace {

constexpr std::int64_t kHour = 3'600;
constexpr std::int64_t kDay = 24 * kHour;

struct Options {
  std::int64_t days = 365;
  std::int64_t tick = 2;
};

Options Parse(std::span<char*> arguments) {
  Options options;
  for (std::size_t i = 1; i + 1 < arguments.size(); i += 2) {
    const std::string_view value = arguments[i + 1];
    std::int64_t& option = std::string_view(arguments[i]) == "--days" ? options.days : options.tick;
    std::from_chars(value.data(), value.data() + value.size(), option);
  }
  return options;
}

/// A folder of its own, in memory where there is one: a year of writes is much for a disk.
class Folder {
 public:
  Folder() {
    const std::filesystem::path memory = "/dev/shm";
    const bool usable = std::filesystem::is_directory(memory) && std::getenv("TMPDIR") == nullptr;
    std::string pattern = ((usable ? memory : std::filesystem::temp_directory_path()) / "orvalis-year-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) std::abort();
    path_ = pattern;
  }
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;
  ~Folder() { std::filesystem::remove_all(path_); }

  [[nodiscard]] const std::filesystem::path& path() const { return path_; }
  [[nodiscard]] std::uintmax_t Size(std::string_view name_begin) const {
    std::uintmax_t size = 0;
    for (const auto& file : std::filesystem::directory_iterator(path_)) {
      if (file.path().filename().string().starts_with(name_begin)) size += file.file_size();
    }
    return size;
  }

 private:
  std::filesystem::path path_;
};

/// What happens to the program on the way, by the second of the year.
void Befall(YearWorld& world, std::int64_t second, std::int64_t tick) {
  const auto at = [&](std::int64_t every, std::int64_t when) { return second % every / tick == when / tick; };
  using std::chrono::hours;
  using std::chrono::seconds;
  if (at(5 * kDay, 2 * kDay)) world.SwitchOff(hours(10));
  if (at(3 * kDay, kDay)) world.SwitchOff(seconds(4));
  if (at(30 * kDay, 29 * kDay)) world.port.PullOut("pulled out");
  if (at(11 * kDay, 6 * kDay)) world.SleepFor(hours(7));
  if (at(180 * kDay, 100 * kDay)) world.SetClockAhead(hours(second < 180 * kDay ? 1 : -1));
  if (at(15 * kDay, 0)) world.SetAudience(true);
  if (at(15 * kDay, kHour)) world.broker.GoAway();
  if (at(15 * kDay, 4 * kHour)) world.SetAudience(false);
  if (at(kDay, 0)) {
    world.profile.log.clear();
    world.alerted.given.clear();
    world.alerted.calls.clear();
  }
}

/// What clients ask for. Returns whether all were answered.
bool AskAround(YearWorld& world, std::int64_t second, std::int64_t tick) {
  bool answered = true;
  const auto ask = [&](std::int64_t every, std::string_view path, std::string_view query, std::string_view expected) {
    if (second % every / tick != 0) return;
    answered = answered && world.Ask(path, query).find(expected) != std::string::npos;
  };
  ask(900, "/api/v1/safetymonitor/0/issafe", "ClientID=1&ClientTransactionID=2", "\"Value\":");
  ask(900, "/observation", "", "\"safe\":");
  ask(900, "/metrics", "", "orvalis_safe");
  ask(6 * kHour, "/history", "from=-86400&points=400", "\"curves\"");
  return answered;
}

int Run(const Options& options) {
  using orvalis_unit::FaultKind;
  const Folder folder;
  YearWorld world(folder.path(), {{.kind = FaultKind::kGarbage, .probability = 0.0005},
                                  {.kind = FaultKind::kCut, .probability = 0.0005},
                                  {.kind = FaultKind::kShort, .probability = 0.0005},
                                  {.kind = FaultKind::kLate, .probability = 0.0003},
                                  {.kind = FaultKind::kWrongAnswer, .probability = 0.02},
                                  {.kind = FaultKind::kSilent, .probability = 0.0002, .seconds = 30}});
  const auto begin = std::chrono::steady_clock::now();
  bool answered = true;
  std::map<std::int64_t, std::size_t> most;  // allocated bytes, by fortnight
  for (std::int64_t second = 0; second < options.days * kDay; second += options.tick) {
    Befall(world, second, options.tick);
    world.Pass(options.tick);
    answered = AskAround(world, second, options.tick) && answered;
    if (second % kHour == 0) {
      std::size_t& peak = most[second / (14 * kDay)];
      peak = std::max(peak, mallinfo2().uordblks);
    }
  }
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;

  const auto megabytes = [&](const char* name) { return static_cast<double>(folder.Size(name)) / 1e6; };
  // The first fortnights fill what is bounded; the last one may be short.
  const std::int64_t last = most.rbegin()->first - 1;
  const auto growth = last > 2 ? static_cast<long>(most[last]) - static_cast<long>(most[2]) : 0;
  const auto ticks = static_cast<double>(options.days * kDay) / static_cast<double>(options.tick);
  std::printf("days %lld, tick %lld s, %.1f s\n", static_cast<long long>(options.days),
              static_cast<long long>(options.tick), taken.count());
  std::printf("frames %llu, safe %.1f %% of the time, wrongly %llu times\n",
              static_cast<unsigned long long>(world.frames), 100 * static_cast<double>(world.safe_ticks) / ticks,
              static_cast<unsigned long long>(world.wrongly_safe));
  std::printf("stream %.1f MB, broker %.1f MB\n", static_cast<double>(world.reader.bytes) / 1e6,
              static_cast<double>(world.broker.bytes) / 1e6);
  std::printf("memory %.0f kB, growth %ld bytes\n", static_cast<double>(most[last]) / 1e3, growth);
  std::printf("history %.1f MB, full log %.1f MB, verdicts %.1f MB\n", megabytes("history"), megabytes("Orvalis"),
              megabytes("orvalis_verdicts"));

  int wrong = 0;
  const auto expect = [&](bool holds, const char* what) {
    if (holds) return;
    std::printf("WRONG: %s\n", what);
    ++wrong;
  };
  expect(world.wrongly_safe == 0, "safe was said without a reading, or while the unit said unsafe");
  expect(static_cast<double>(world.frames) > ticks / 2 * 0.85, "fewer readings than the unit gave");
  expect(world.safe_ticks > 0, "never safe");
  expect(answered, "a client got no answer, or not the one it asked for");
  expect(world.reader.bytes > 0 && world.broker.bytes > 0, "the stream or the broker got nothing");
  expect(growth < 100'000, "memory grows");
  expect(megabytes("Orvalis") < 6 * 75.1, "the full log is not bounded");
  expect(megabytes("history") < 60, "the history file is not bounded");
  expect(megabytes("orvalis_verdicts") < 60, "the verdict log is not bounded");
  return wrong == 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}

}  // namespace
}  // namespace orvalis::test

int main(int argc, char** argv) {
  return orvalis::test::Run(orvalis::test::Parse({argv, static_cast<std::size_t>(argc)}));
}
