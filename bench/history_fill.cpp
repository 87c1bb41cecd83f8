// Fills a history from frames as if the program had received them: a night in a moment, for benchmarks and screenshots.
//   history_fill FILE <FRAMES    each line: milliseconds since 1970-01-01 UTC, a blank, the frame

#include <cstdio>
#include <iostream>
#include <string>

#include "config/settings_store.h"
#include "history/history_recorder.h"
#include "platform/sqlite/sqlite_history.h"
#include "reading/frame_interpreter.h"
#include "tests/support/fake_event_loop.h"
#include "verdict/safety_judge.h"

namespace orvalis {
namespace {

class GivenClock : public Clock {
 public:
  [[nodiscard]] CivilTime LocalNow() const override { return UtcNow(); }
  [[nodiscard]] CivilTime UtcNow() const override {
    // Any number of seconds is valid: they are only added up.
    return {.second = static_cast<int>(now / 1000), .millisecond = static_cast<int>(now % 1000)};
  }
  [[nodiscard]] CivilTime LocalAt(std::int64_t milliseconds) const override { return TimeAt(milliseconds); }
  std::int64_t now = 0;
};

int Run(const char* file) {
  Settings settings;
  for (const SettingKey& key : SettingKeys()) {
    if (key.default_text) SetFromText(key, DefaultText(key, "", {}), {}, settings);
  }
  GivenClock clock;
  test::FakeEventLoop loop;
  const auto report = [](const std::string& text) { std::fprintf(stderr, "%s\n", text.c_str()); };
  SqliteHistory store(file, clock, report);
  HistoryRecorder recorder({.loop = loop, .clock = clock, .store = store, .report = report, .remember = false});
  FrameInterpreter interpreter;
  WeatherState weather;
  SafetyJudge judge;
  const Situation situation{.connected = true};
  long count = 0;
  std::int64_t time = 0;
  std::string text;
  constexpr int kFramesPerGust = WindFigures::kGustBlockTicks / 2;
  while (std::cin >> time && std::getline(std::cin >> std::ws, text)) {
    const SensorFrame frame(text);
    if (count++ % kFramesPerGust == 0) interpreter.BeginGustBlock();
    FrameInterpreter::ReadSwitches(frame, weather);
    interpreter.ReadRainLightAndWind(frame, settings, weather);
    interpreter.Interpret(frame, settings, 200, weather);
    clock.now = time;
    recorder.Note(weather, frame);
    const Instant now{.tick = loop.TickCount(), .utc = time};
    judge.Take({.frame = frame, .weather = weather, .source = ReadingSource::kUnit}, settings, situation, now);
    recorder.NoteVerdict(judge.Judge(settings, situation, now));
    loop.Advance(std::chrono::seconds(2));
  }
  recorder.Flush();
  std::printf("%ld\n", count);
  return 0;
}

}  // namespace
}  // namespace orvalis

int main(int argc, char** argv) { return argc == 2 ? orvalis::Run(argv[1]) : 2; }
