#include "tests/year/year_world.h"

#include <utility>

#include "night_scenario.h"

namespace orvalis::test {
namespace {

/// 2026-11-21T21:04:05Z, where the loop's count is that of `FakeEventLoop` at its start.
constexpr std::int64_t kStart = 1'795'295'045'000;

}  // namespace

YearWorld::YearWorld(std::filesystem::path folder, std::vector<orvalis_unit::FaultRule> faults)
    : folder_(std::move(folder)),
      unit_(orvalis_unit::Scenario::Parse(orvalis_unit::NightScenario(), "night"),
            {.is_fast = true, .faults = std::move(faults), .seed = 1}, nowhere_),
      history_store_(folder_ / "history.sqlite", clock, [this](const std::string& text) { events.Record(text); }),
      history_({.loop = loop,
                .clock = clock,
                .store = history_store_,
                .report = [this](const std::string& text) { events.Record(text); }}),
      verdict_log_([this](const std::string& text) { events.Record(text); }),
      verdict_records_({.clock = clock, .settings = settings, .events = events, .log = verdict_log_}),
      safety_alerts_({.loop = loop,
                      .settings = settings,
                      .observer = observer,
                      .sounds = alerted,
                      .programs = alerted,
                      .events = events}),
      alpaca_({.observe = [this]() -> const Observation& { return observer.Now(); },
               .tick = [this] { return loop.TickCount(); }}),
      readings_({.observe = [this]() -> const Observation& { return observer.Now(); },
                 .tick = [this] { return loop.TickCount(); },
                 .station = station_,
                 .counters = [] { return network::MetricCounters{}; }}),
      curves_({.observe = [this]() -> const Observation& { return observer.Now(); },
               .tick = [this] { return loop.TickCount(); },
               .recorded = [this] { return history_.View(); },
               .station = station_}),
      mqtt_({.loop = loop,
             .client = broker,
             .store = store,
             .observe = [this]() -> const Observation& { return observer.Now(); },
             .record = [this](const std::string& text) { events.Record(text); }}) {
  port.writes_down = false;
  port.unit = [this](std::string_view bytes) {
    unit_.Receive(bytes, UnitTime());
    return Watched(unit_.TakeDue(UnitTime()));
  };
  settings.g_lFullLog = 1;
  settings.g_sFullLogPath = settings.g_sOneLineLogPath = folder_.string();
  settings.MqttEnabled = 1;
  settings.MqttHost = "broker";
  settings.MqttHomeAssistant = 1;
  logs.OpenFullLog(settings);
  alpaca_.AddTo(resources_);
  readings_.AddTo(resources_);
  curves_.AddTo(resources_);
  alpaca_.SetStation(station_);
  observer.Listen([this](const Observation& now, const Observer::News& news) {
    alpaca_.Note(now);
    readings_.Note(now, news);
    mqtt_.Note(now, news);
    safety_alerts_.Note(now);
    verdict_records_.Note(now, news);
    history_.NoteVerdict(now);
  });
  poll.Listen([this](const SensorFrame& frame) {
    ++frames;
    history_.Note(weather, frame);
  });
  network::HttpRequest request;
  request.method = network::Method::kGet;
  request.path = "/observation/stream";
  stream_ = resources_.Answer(request).events;
  connector.Connect();
}

void YearWorld::SetAudience(bool present) {
  settings.MqttEnabled = settings.g_lOneLineLog = present ? 1 : 0;
  mqtt_.Apply(settings, station_);
  present ? stream_->Join(reader) : stream_->Leave(reader);
}

void YearWorld::SwitchOff(std::chrono::seconds duration) {
  unit_.SwitchOff(UnitTime() + duration);
  off_until_ = loop.TickCount() + std::chrono::milliseconds(duration).count();
  unsafe_since_ = 0;
}

void YearWorld::Pass(std::int64_t seconds) {
  clock.now = TimeAt(kStart + loop.TickCount() + std::chrono::milliseconds(clock_ahead_).count());
  Tick(true, std::chrono::seconds(seconds));
  if (const std::string late = Watched(unit_.TakeDue(UnitTime())); !late.empty()) port.Deliver(late);
  CheckVerdict();
}

void YearWorld::CheckVerdict() {
  const std::int64_t now = loop.TickCount();
  if (now >= off_until_) {
    const bool on = unit_.CurrentReadings(UnitTime())[Index(orvalis_unit::Field::kRelay)] != 0;
    unsafe_since_ = !on ? 0 : unsafe_since_ != 0 ? unsafe_since_ : now;
  }
  if (!observer.Now().verdict.safe) return;
  ++safe_ticks;
  const std::int64_t fresh = std::chrono::milliseconds(kFreshFor).count();
  if (now - sent_at_ > fresh || (unsafe_since_ != 0 && now - unsafe_since_ > fresh)) ++wrongly_safe;
}

std::string YearWorld::Ask(std::string_view path, std::string_view query) {
  network::HttpRequest request;
  request.method = network::Method::kGet;
  request.path = path;
  request.query = query;
  return resources_.Answer(request).body;
}

std::string YearWorld::Watched(std::string bytes) {
  if (bytes.size() >= orvalis_unit::kFrameLength) sent_at_ = loop.TickCount();
  return bytes;
}

}  // namespace orvalis::test
