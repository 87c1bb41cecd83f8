// The path of every frame: from the unit's line to values and words, and from these to the verdict.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdlib>
#include <new>

#include "config/settings_store.h"
#include "reading/frame_interpreter.h"
#include "verdict/safety_judge.h"

namespace {

std::size_t g_allocations = 0;

}  // namespace

// Not inlined: g++ would warn about a free() of memory from new.
[[gnu::noinline]] void* operator new(std::size_t size) {
  ++g_allocations;
  if (void* memory = std::malloc(size)) return memory;
  throw std::bad_alloc();
}
[[gnu::noinline]] void operator delete(void* memory) noexcept { std::free(memory); }
[[gnu::noinline]] void operator delete(void* memory, std::size_t /*size*/) noexcept { std::free(memory); }

namespace orvalis {
namespace {

Settings DefaultSettings() {
  Settings settings;
  for (const SettingKey& key : SettingKeys()) {
    if (key.default_text) SetFromText(key, DefaultText(key, "", {}), {}, settings);
  }
  return settings;
}

void LineToWords(benchmark::State& state) {
  const Settings settings = DefaultSettings();
  const SensorFrame frames[] = {
      SensorFrame("HUM=0520 LGT=1000 R=0120 WND=0020 TP=-02000 TTP=+00600 TA=+00500 AH=1 HB=0 AR=1 RB=0 AW=1 AL=0 AC=1 "
                  "Trg=+03691 FW=21#"),
      SensorFrame("HUM=0712 LGT=0150 R=0480 WND=0031 TP=+00875 TTP=+01234 TA=+01102 AH=1 HB=1 AR=1 RB=1 AW=1 AL=0 AC=1 "
                  "Trg=+03691 FW=21#")};
  FrameInterpreter interpreter;
  WeatherState weather;
  const auto interpret = [&](const SensorFrame& frame) {
    FrameInterpreter::ReadSwitches(frame, weather);
    interpreter.ReadRainLightAndWind(frame, settings, weather);
    interpreter.Interpret(frame, settings, 200, weather);
  };
  for (const SensorFrame& frame : frames) interpret(frame);  // what is made once is made now
  std::size_t most = 0;                                      // per frame: the benchmark itself allocates between frames
  std::size_t next = 0;
  for (auto _ : state) {
    const std::size_t before = g_allocations;
    const SensorFrame& frame = frames[next ^= 1];
    interpret(frame);
    benchmark::DoNotOptimize(weather);
    most = std::max(most, g_allocations - before);
  }
  state.counters["allocations"] = static_cast<double>(most);
}
BENCHMARK(LineToWords);

void ReadingToVerdict(benchmark::State& state) {
  const Settings settings = DefaultSettings();
  const Situation situation{.connected = true, .session = 1};
  const SensorFrame frame(
      "HUM=0712 LGT=0150 R=0480 WND=0031 TP=+00875 TTP=+01234 TA=+01102 AH=1 HB=1 AR=1 RB=1 AW=1 AL=0 AC=1 "
      "Trg=+03691 FW=21#");
  FrameInterpreter interpreter;
  WeatherState weather;
  FrameInterpreter::ReadSwitches(frame, weather);
  interpreter.ReadRainLightAndWind(frame, settings, weather);
  interpreter.Interpret(frame, settings, 200, weather);
  SafetyJudge judge;
  Instant now;
  std::size_t most = 0;
  for (auto _ : state) {
    const std::size_t before = g_allocations;
    now.tick += 2000;
    now.utc += 2000;
    judge.Take({.frame = frame, .weather = weather, .source = ReadingSource::kUnit}, settings, situation, now);
    benchmark::DoNotOptimize(judge.Judge(settings, situation, now));
    most = std::max(most, g_allocations - before);
  }
  state.counters["allocations"] = static_cast<double>(most);
}
BENCHMARK(ReadingToVerdict);

}  // namespace
}  // namespace orvalis

BENCHMARK_MAIN();
