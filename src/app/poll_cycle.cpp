#include "app/poll_cycle.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <utility>

namespace orvalis {
namespace {

constexpr std::int16_t kTicksPerCycle = 2;
constexpr std::int16_t kLongestCount = std::numeric_limits<std::int16_t>::max();
constexpr auto kPolling = Message::Of("polling the unit");
constexpr std::int64_t kFreshForMs = std::chrono::milliseconds(kFreshFor).count();
constexpr auto kFreshAgain = Message::Of("Receiving complete frames again");
/// How long that message stays.
constexpr std::int64_t kNewsForMs = 60'000;

}  // namespace

PollCycle::PollCycle(const Parts& parts) : parts_(parts), last_frame_tick_(parts.loop.TickCount()) {}

void PollCycle::Poll() {
  RaiseCounters();
  CheckStaleness();
  CheckAveragingCount();
  if (counters_.divider.ticks() < kTicksPerCycle || cycle_.running()) return;
  counters_.divider.Reset();
  cycle_.Start(WorkingCycle(), [this](const std::exception_ptr& error) {
    if (!error) return;
    parts_.boundary.Report(kPolling, error);
    if (last_frame_unusable_) Observe(false);
    CheckStaleness();  // the verdict of an unusable frame expires with the last usable one
  });
}

Task<> PollCycle::WorkingCycle() {
  ++sample_count_;
  WithdrawDemoVerdict();
  const ReadingSource source = co_await NextFrame();
  if (source == ReadingSource::kNone) co_return;
  ResetAfterGap(source);
  ReadSwitches();
  ReadRainLightAndWind();
  Convert();
  ShowFresh();
  Observe(true);
  parts_.alerts.Check(Alerts::Kind::kCloud, parts_.settings, parts_.weather);
  if (parts_.draw) parts_.draw();
  StartUploads();
  WriteLogs();
  for (const Listener& listener : listeners_) listener(frame_);
  parts_.boundary.Succeeded(kPolling);
}

Task<ReadingSource> PollCycle::NextFrame() {
  if (InDemoMode()) {
    frame_ = demo_.Next(counters_.demo_line);
    co_return ReadingSource::kDemo;
  }
  counters_.demo_line.Reset();
  // A unit that was switched off may answer again at any moment, so requests are repeated without limit.
  while (parts_.link.Ready() && !InDemoMode()) {
    // Before each request: after a new handshake the unit may have lost its settings, and its verdict depends on them.
    co_await parts_.link.PushSettings(parts_.settings);
    if (!parts_.link.Ready() || InDemoMode()) break;
    const SensorLink::FrameResult result = co_await parts_.link.RequestFrame(frame_);
    if (result == SensorLink::FrameResult::kComplete) co_return ReadingSource::kUnit;
    if (result == SensorLink::FrameResult::kEnded) break;
  }
  co_return ReadingSource::kNone;
}

void PollCycle::WithdrawDemoVerdict() {
  if (InDemoMode() || source_ != ReadingSource::kDemo) return;
  source_ = ReadingSource::kNone;
  WithdrawVerdict();
}

void PollCycle::WithdrawVerdict() { parts_.weather.unsafe_indicator = WeatherState::kNoVerdict; }

void PollCycle::ResetAfterGap(ReadingSource source) {
  // Averages mixed from old or demo values and current readings would look fresh and be wrong. The clock is checked
  // too: the machine may have slept since the last tick.
  const bool on_time = parts_.loop.TickCount() - last_frame_tick_ < kFreshForMs;
  const bool continues = source == source_ && !parts_.panel.stale && on_time;
  source_ = source;
  if (!std::exchange(any_frame_, true) || continues) return;
  interpreter_ = {};
  parts_.weather.ForgetAverages();
}

void PollCycle::ReadSwitches() {
  parts_.weather.from_demo = source_ == ReadingSource::kDemo;
  FrameInterpreter::ReadSwitches(frame_, parts_.weather);
  parts_.alerts.Check(Alerts::Kind::kRelay, parts_.settings, parts_.weather);
}

void PollCycle::ReadRainLightAndWind() {
  if (counters_.gust_block.ticks() >= WindFigures::kGustBlockTicks) {
    counters_.gust_block.Reset();
    interpreter_.BeginGustBlock();
  }
  interpreter_.ReadRainLightAndWind(frame_, parts_.settings, parts_.weather);
  using enum Alerts::Kind;
  for (const Alerts::Kind kind : {kRain, kWind, kLight}) parts_.alerts.Check(kind, parts_.settings, parts_.weather);
}

void PollCycle::Convert() {
  last_frame_unusable_ = true;
  const bool averaged =
      interpreter_.Interpret(frame_, parts_.settings, TakeHumiditySelector(parts_.panel), parts_.weather);
  last_frame_unusable_ = false;
  ShowReadings(parts_.weather, UnitsOf(parts_.settings), parts_.locale, parts_.panel);
  parts_.panel.averaging =
      AveragingText(averaged, interpreter_.samples_taken(), parts_.settings.TempsAvgCount, parts_.panel.ambient);
}

void PollCycle::ShowFresh() {
  if (stale_reported_) {
    stale_reported_ = false;
    parts_.events.Record("fresh again: receiving complete frames");
    parts_.panel.status = kFreshAgain;
    fresh_again_since_ = parts_.loop.TickCount();
  }
  if (fresh_again_since_ && parts_.loop.TickCount() - *fresh_again_since_ >= kNewsForMs) {
    if (parts_.panel.status == kFreshAgain) parts_.panel.status.clear();
    fresh_again_since_.reset();
  }
  counters_.since_frame.Reset();
  last_frame_tick_ = parts_.loop.TickCount();
  parts_.panel.stale = false;
  parts_.panel.fresh_at = parts_.clock.LocalNow();
}

void PollCycle::Observe(bool usable) {
  parts_.observer.Take({.frame = frame_, .weather = parts_.weather, .source = source_, .usable = usable});
}

void PollCycle::StartUploads() {
  for (UploadSchedule* upload : parts_.uploads) {
    if (upload != nullptr) upload->Work(parts_.boundary);
  }
}

void PollCycle::WriteLogs() {
  parts_.logs.Write({.time = parts_.clock.LocalNow(),
                     .weather = parts_.weather,
                     .frame = frame_,
                     .seconds_since_frame = seconds_since_frame(),
                     .safe = parts_.observer.Now().verdict.safe},
                    parts_.settings, parts_.loop.TickCount());
}

void PollCycle::KeepRecord(bool at_once) {
  parts_.logs.WriteBetweenFrames({.time = parts_.clock.LocalNow(),
                                  .weather = parts_.weather,
                                  .frame = frame_,
                                  .seconds_since_frame = seconds_since_frame(),
                                  .safe = parts_.observer.Now().verdict.safe,
                                  .current = false},
                                 parts_.settings, parts_.loop.TickCount(), at_once);
}

void PollCycle::RaiseCounters() {
  counters_.divider.RaiseUpTo(kTicksPerCycle);
  counters_.demo_line.RaiseUpTo(DemoFeed::kTicksPerLine);
  counters_.gust_block.RaiseUpTo(WindFigures::kGustBlockTicks);
  counters_.since_frame.RaiseUpTo(kLongestCount);
  for (UploadSchedule* upload : parts_.uploads) {
    if (upload != nullptr) upload->Tick(parts_.boundary);
  }
}

void PollCycle::CheckAveragingCount() {
  const Message complaint = AveragingCountComplaint(parts_.settings.TempsAvgCount);
  if (complaint == parts_.panel.StandingText(StandingMessage::Cause::kAveragingCount)) return;
  parts_.panel.Stand({.cause = StandingMessage::Cause::kAveragingCount, .text = complaint});
  parts_.events.Record(complaint.empty() ? "the setting \"TempsAvgCount\" is within its limits again"
                                         : complaint.English());
}

void PollCycle::CheckStaleness() {
  WithdrawDemoVerdict();
  // Values age even while no ticks arrive because the machine sleeps or the timer is paused.
  const std::int64_t now = parts_.loop.TickCount();
  const std::int64_t elapsed = (now - last_frame_tick_) / 1000;
  while (counters_.since_frame.ticks() < std::min<std::int64_t>(elapsed, kLongestCount)) counters_.since_frame.Raise();
  if (!parts_.link.Ready()) {
    ready_since_.reset();
  } else if (!ready_since_ || session_ != parts_.link.session()) {
    ready_since_ = now;
    session_ = parts_.link.session();
    stale_reported_ = false;  // silence of a new connection is reported again
  }
  if (counters_.since_frame.ticks() < kFreshFor.count()) return;
  parts_.panel.stale = true;
  const bool keeps = parts_.settings.KeepVerdict == 1;
  if (!keeps && parts_.weather.unsafe_indicator != WeatherState::kNoVerdict) WithdrawVerdict();
  // A link that was just opened gets time to answer.
  const bool answer_due = ready_since_ && now - *ready_since_ >= kFreshForMs;
  if (stale_reported_ || !answer_due) return;
  stale_reported_ = true;
  const Message since = parts_.panel.fresh_at
                            ? Message::Of("since %1").With(parts_.clock.style().time(*parts_.panel.fresh_at))
                            : Message(Message::Of("since the start"));
  const std::string lacking = last_frame_unusable_ ? "valid reading" : "complete frame";
  parts_.events.Record("stale: no " + lacking + " " + since.English());
  parts_.panel.status = last_frame_unusable_ ? Message::Of("No valid reading from the unit %1").With(since)
                                             : Message::Of("No complete frame from the unit %1").With(since);
}

}  // namespace orvalis
