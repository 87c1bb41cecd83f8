// Measures a frame request on a (pseudo) line, compared with the minimum that the line and the fixed pauses need.
//   cycle_bench PORT COUNT

#include <QCoreApplication>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "base/event_list.h"
#include "base/task.h"
#include "platform/linux/qt_serial_port.h"
#include "platform/qt/ini_profile.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_event_loop.h"
#include "unit/sensor_link.h"

namespace orvalis {
namespace {

using Clock = std::chrono::steady_clock;

Task<> Measure(SensorLink& link, int count, std::vector<double>& milliseconds) {
  co_await link.Connect();
  SensorFrame frame;
  for (int i = 0; i < count && link.Ready(); ++i) {
    const auto begin = Clock::now();
    const SensorLink::FrameResult result = co_await link.RequestFrame(frame);
    if (result != SensorLink::FrameResult::kComplete) continue;
    milliseconds.push_back(std::chrono::duration<double, std::milli>(Clock::now() - begin).count());
  }
}

int Run(const char* port_name, int count) {
  QtEventLoop loop;
  QtClock clock;
  QtSerialPort port;
  IniProfile profile("/nonexistent");
  SettingsStore store(profile, "", {});
  Message status;
  EventList events(clock);
  UnitOptions options;
  SensorLink link({.port = port, .loop = loop, .store = store, .status = status, .events = events, .options = options},
                  port_name);
  std::vector<double> milliseconds;
  Job job;
  job.Start(Measure(link, count, milliseconds), [](const std::exception_ptr&) { QCoreApplication::quit(); });
  QCoreApplication::exec();
  if (std::ssize(milliseconds) * 10 < count * 9L) {  // the line is busy, or gone
    std::fprintf(stderr, "%zu frames of %d: %s\n", milliseconds.size(), count, status.English().c_str());
    return 1;
  }
  std::sort(milliseconds.begin(), milliseconds.end());
  // 20 ms after ":", then 117 characters of ten bits each at 9600 bit/s, during which the 80 ms pass, then 40 ms.
  constexpr double kNeeded = 20 + 117 * 10 / 9.6 + 40;
  const double median = milliseconds[milliseconds.size() / 2];
  std::printf("%.2f %.2f %.2f\n", median, kNeeded, 100 * (median / kNeeded - 1));
  return 0;
}

}  // namespace
}  // namespace orvalis

int main(int argc, char** argv) {
  const QCoreApplication application(argc, argv);
  if (argc != 3) return 2;
  return orvalis::Run(argv[1], std::atoi(argv[2]));
}
