// Runs a year of ticks through the logic, with a unit that is sometimes off for hours and an adapter that is unplugged
// once a month. Prints the seconds taken and the kilobytes by which resident memory grew after the first week.

#include <cstdio>
#include <ctime>
#include <fstream>

#include "tests/support/link_world.h"

namespace orvalis {
namespace {

long ResidentKilobytes() {
  std::ifstream statm("/proc/self/statm");
  long pages = 0;
  statm >> pages >> pages;
  return pages * 4;
}

int Run() {
  constexpr int kHour = 3600;
  constexpr int kDay = 24 * kHour;
  constexpr int kYear = 365 * kDay;
  test::LinkWorld world;
  world.port.writes_down = false;
  long frames = 0;
  world.poll.Listen([&](const SensorFrame&) { ++frames; });

  const std::clock_t begin = std::clock();  // processor time: nothing here waits
  long settled = 0;
  world.connector.Connect();
  for (int second = 0; second < kYear; ++second) {
    if (second == 7 * kDay) settled = ResidentKilobytes();
    world.port.silent = second % (5 * kDay) < 10 * kHour;
    if (second % (30 * kDay) == 29 * kDay) world.port.PullOut("pulled out");
    world.Tick(true);
  }
  const double taken = static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
  std::printf("%.1f %ld %ld\n", taken, ResidentKilobytes() - settled, frames);
  for (const Event& event : world.events.events()) {
    if (event.text.starts_with("Error")) {
      std::fprintf(stderr, "%s\n", event.text.c_str());
      return 1;
    }
  }
  // Off for ten hours every five days: at least nine tenths of the cycles got a frame.
  return frames > kYear / 2 * 9 / 10 ? 0 : 1;
}

}  // namespace
}  // namespace orvalis

int main() { return orvalis::Run(); }
