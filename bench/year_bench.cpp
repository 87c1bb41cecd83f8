// A year of ticks through the logic, with a unit that is sometimes off for hours and an adapter that is pulled out once
// a month. Prints the seconds that it took and by how many kilobytes the resident memory grew after the first week.

#include <chrono>
#include <cstdio>
#include <fstream>

#include "acquisition/auto_reconnect.h"
#include "acquisition/connector.h"
#include "acquisition/poll_cycle.h"
#include "acquisition/sensor_link.h"
#include "tests/support/alert_recorder.h"
#include "tests/support/fake_event_loop.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/memory_profile.h"

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
  test::FakeEventLoop loop;
  test::FakeClock clock;
  test::FakeSerialPort port(loop);
  port.writes_down = false;
  test::MemoryProfile profile;
  SettingsStore store(profile, "", {});
  Settings settings = store.LoadSettings();
  WeatherState weather;
  PanelModel panel;
  UnitOptions options;
  EventList events(clock);
  ErrorBoundary boundary(panel, events);
  SensorLink link({.port = port, .loop = loop, .store = store, .panel = panel, .events = events, .options = options},
                  "/dev/unit");
  Connector connector(link, boundary);
  AutoReconnect reconnect({.link = link, .connector = connector, .panel = panel, .events = events, .clock = clock});
  test::AlertRecorder given;
  Alerts alerts(given, given, events);
  LogWriter logs([&](const std::string& text) { events.Record(text); });
  PollCycle poll({.loop = loop,
                  .clock = clock,
                  .link = link,
                  .settings = settings,
                  .weather = weather,
                  .panel = panel,
                  .events = events,
                  .boundary = boundary,
                  .alerts = alerts,
                  .logs = logs,
                  .locale = {}});
  long frames = 0;
  poll.Listen([&](const SensorFrame&) { ++frames; });

  const auto begin = std::chrono::steady_clock::now();
  long settled = 0;
  connector.Connect();
  for (int second = 0; second < kYear; ++second) {
    if (second == 7 * kDay) settled = ResidentKilobytes();
    port.silent = second % (5 * kDay) < 10 * kHour;
    if (second % (30 * kDay) == 29 * kDay) port.PullOut("pulled out");
    poll.Poll();
    reconnect.Tick(true);
    loop.Advance(std::chrono::seconds(1));
  }
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
  std::printf("%.1f %ld %ld\n", taken.count(), ResidentKilobytes() - settled, frames);
  for (const Event& event : events.events()) {
    if (event.text.starts_with("Error")) {
      std::fprintf(stderr, "%s\n", event.text.c_str());
      return 1;
    }
  }
  // Off for ten hours in five days: at least nine tenths of the cycles got a frame.
  return frames > kYear / 2 * 9 / 10 ? 0 : 1;
}

}  // namespace
}  // namespace orvalis

int main() { return orvalis::Run(); }
