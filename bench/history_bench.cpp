// Measures loading a night's history from its file and drawing 48 hours. Prints medians in milliseconds: loading 12
// hours of rows and drawing each graph with 48 hours; then the size in megabytes of a history of 400 days, the time to
// open, check and load it, the time until a graph shows all of it, and the longest time for which everything else waits
// meanwhile.
//   history_bench FOLDER

#include <QApplication>
#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <vector>

#include "history/history_recorder.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/sqlite/sqlite_history.h"
#include "ui/graphs/frm_graph.h"
#include "ui/graphs/history_plot.h"

namespace orvalis {
namespace {

using std::chrono::steady_clock;

constexpr std::int64_t kCycleMs = 2000;

template <typename Work>
double Median(int times, Work work) {
  std::vector<double> taken;
  for (int i = 0; i < times; ++i) {
    const auto begin = steady_clock::now();
    work();
    taken.push_back(std::chrono::duration<double, std::milli>(steady_clock::now() - begin).count());
  }
  std::sort(taken.begin(), taken.end());
  return taken[taken.size() / 2];
}

/// Restless weather: every value changes each time.
Sample WeatherAt(std::int64_t time) {
  const double hours = static_cast<double>(time) / 3.6e6;
  const auto wave = [&](double middle, double size, double period) {
    return static_cast<float>(std::round(100 * (middle + size * std::sin(hours * 6.283 / period))) / 100);
  };
  Sample sample{.time = time, .values = {}, .held = {}, .conditions = {}};
  sample.values[Quantity::kSky] = wave(-15, 12, 3.1) + wave(0, 1, 0.013);
  sample.values[Quantity::kClearSky] = wave(-20, 3, 12) + wave(0, 0.2, 0.017);
  sample.values[Quantity::kAmbient] = wave(8, 6, 24) + wave(0, 0.3, 0.011);
  sample.values[Quantity::kDewPoint] = wave(4, 2, 13) + wave(0, 0.3, 0.019);
  sample.values[Quantity::kWind] = std::abs(wave(5, 5, 5)) + std::abs(wave(0, 4, 0.007));
  sample.values[Quantity::kGust] = sample.values[Quantity::kWind] + 3;
  sample.values[Quantity::kHumidity] = wave(60, 30, 11);
  sample.conditions.Put(std::sin(hours) > 0 ? Condition::kClear : Condition::kCloudy);
  if (std::sin(hours * 7) > 0.8) sample.conditions.Put(Condition::kUnsafe);
  return sample;
}

void Store(SqliteHistory& store, std::int64_t now, std::int64_t hours) {
  HistoryStore::Batch batch;
  for (std::int64_t time = now - hours * History::kHourMs; time <= now; time += kCycleMs) {
    batch.samples.push_back(WeatherAt(time));
    if (batch.spans.empty() || !Absorb(batch.spans.back(), batch.samples.back())) {
      batch.spans.push_back(SpanOf(batch.samples.back()));
    }
  }
  // A gusty time: the verdict changes every half minute.
  constexpr std::int64_t kVerdictMs = 30'000;
  for (std::int64_t time = now - hours * History::kHourMs; time < now; time += kVerdictMs) {
    const bool safe = time / kVerdictMs % 2 == 0;
    batch.verdicts.push_back({.first = time,
                              .last = time + kVerdictMs,
                              .safe = safe,
                              .source = ReadingSource::kUnit,
                              .reasons = safe ? "" : "unit_alarm wind",
                              .explanation = safe ? "" : "wind 31 counts, limit 24. wind 31.0 mph, limit 24.0 mph"});
  }
  store.Write(batch);
}

frmGraph::Parts GraphParts(const HistoryRecorder& recorder) {
  return {.recorder = recorder,
          .units = [] { return DisplayUnits{.centigrade = false}; },
          .limits =
              [] {
                Settings settings;
                settings.PartCloudyDegC = 22;
                settings.FullCloudyDegC = 19;
                return WordLimitsOf(settings);
              },
          .on_top = [] { return false; },
          .report = [](const std::string&) {}};
}

struct Reading {
  double total = 0;
  double longest = 0;
};

/// Shows all of `recorder`'s history.
Reading ReadAll(const HistoryRecorder& recorder) {
  frmGraph window(TemperatureGraph(), GraphParts(recorder));
  window.resize(1200, 700);
  window.show();
  QCoreApplication::processEvents();
  window.plot().ShowAll();
  Reading taken;
  while (window.plot().reading()) {
    const double once = Median(1, [] { QCoreApplication::processEvents(); });
    taken.longest = std::max(taken.longest, once);
    taken.total += once;
  }
  if (!window.plot().shows_past()) std::exit(1);
  return taken;
}

int Run(const std::filesystem::path& folder) {
  QtEventLoop loop;
  const QtClock clock;
  const auto report = [](const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); };
  const std::int64_t now = UtcMilliseconds(clock.UtcNow());
  {
    SqliteHistory store(folder / "night.sqlite", clock, report);
    Store(store, now, 12);
  }
  const double load = Median(9, [&] {
    SqliteHistory store(folder / "night.sqlite", clock, report);
    History history;
    const auto part = store.Load(now - History::kKeptMs, now - History::kUnthinnedMs, now);
    history.Load(part.spans, part.samples, now);
    if (history.size() < 21'600) std::exit(1);
  });

  SqliteHistory store(folder / "days.sqlite", clock, report);
  Store(store, now, 48);
  HistoryRecorder recorder({.loop = loop, .clock = clock, .store = store, .report = report});
  recorder.LoadSoon();
  while (!recorder.Shown().Extent()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  std::vector<double> draws;
  for (const GraphKind* kind : {&TemperatureGraph(), &WindGraph(), &RainGraph()}) {
    frmGraph window(*kind, GraphParts(recorder));
    window.resize(1200, 700);
    window.show();
    QCoreApplication::processEvents();
    window.plot().ShowAll();
    draws.push_back(Median(15, [&] {
      window.plot().Rebuild();
      window.plot().replot(QCustomPlot::rpImmediateRefresh);
    }));
  }

  // 400 days of spans, as a year of operation leaves them, and two days of samples.
  const std::filesystem::path year = folder / "year.sqlite";
  {
    SqliteHistory filled(year, clock, report);
    for (int day = 400; day > 0; --day) {
      Store(filled, now - std::int64_t{day - 1} * 24 * History::kHourMs, 24);
      filled.Forget(now - History::kKeptMs, 0);
    }
  }
  const double megabytes = static_cast<double>(std::filesystem::file_size(year)) / 1e6;
  const double open = Median(5, [&] {
    SqliteHistory whole(year, clock, report);
    if (whole.Load(now - History::kKeptMs, now - History::kUnthinnedMs, now).samples.empty()) std::exit(1);
  });
  SqliteHistory whole(year, clock, report);
  HistoryRecorder all({.loop = loop, .clock = clock, .store = whole, .report = report});
  all.LoadSoon();
  while (!all.Shown().Extent()) QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
  const Reading reading = ReadAll(all);
  std::printf("%.1f %.1f %.1f %.1f %.1f %.1f %.0f %.1f\n", load, draws[0], draws[1], draws[2], megabytes, open,
              reading.total, reading.longest);
  return 0;
}

}  // namespace
}  // namespace orvalis

int main(int argc, char** argv) {
  if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
  const QApplication application(argc, argv);
  return argc == 2 ? orvalis::Run(argv[1]) : 2;
}
