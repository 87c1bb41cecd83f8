#include "sensor_unit.h"

#include <algorithm>
#include <utility>

namespace orvalis_unit {
namespace {

constexpr std::string_view kHandshakeAnswer = "W";

// Requests that arrive while this many answers are queued find the unit busy and are lost.
constexpr std::size_t kMostWaiting = 16;

struct ReportedSetting {
  Field field;
  Setting setting;
};

// The settings that the frame reports.
constexpr ReportedSetting kReported[] = {{Field::kHeaterAllowed, Setting::kHeaterAllowed},
                                         {Field::kRelayAllowed, Setting::kRelayAllowed},
                                         {Field::kWindAlarm, Setting::kWindAlarm},
                                         {Field::kLightAlarm, Setting::kLightAlarm},
                                         {Field::kCloudAlarm, Setting::kCloudAlarm}};

}  // namespace

SensorUnit::SensorUnit(Scenario scenario, const Configuration& configuration, Recorder& recorder)
    : scenario_(std::move(scenario)),
      speed_(configuration.speed),
      recorder_(recorder),
      faults_(configuration.faults, configuration.seed),
      line_(configuration.is_fast ? 0 : Transmitter::kLineSpeed) {
  bridge_.SetDelay(FromSeconds(configuration.delay));
  bridge_.SetBursts(FromSeconds(configuration.bursts));
}

void SensorUnit::Receive(std::string_view bytes, Time now) {
  recorder_.Write(now, "rx " + Quoted(bytes));
  if (now < off_until_) return;
  for (const char byte : bytes) {
    const auto request = parser_.Feed(byte);
    if (request) Handle(*request, now);
    if (drop_) return;  // the rest is lost with the pulled cable
  }
}

void SensorUnit::Handle(const Request& request, Time now) {
  switch (request.kind) {
    case RequestKind::kHandshake:
      recorder_.Write(now, "handshake");
      Reply(AnswerKind::kHandshake, std::string(kHandshakeAnswer), now);
      break;
    case RequestKind::kFrame:
      recorder_.Write(now, "frame");
      Reply(AnswerKind::kFrame, CurrentFrame(now), now);
      break;
    case RequestKind::kCommand:
      settings_[Index(request.setting)] = request.value;
      recorder_.Write(now, "command " + std::string(SettingTable()[Index(request.setting)].code) + " " +
                               std::to_string(request.value));
      break;
    case RequestKind::kPace:
      break;
    case RequestKind::kDropped:
      recorder_.Write(now, "dropped " + Quoted(request.text));
      break;
  }
}

void SensorUnit::Reply(AnswerKind kind, std::string text, Time now) {
  if (line_.Waiting() >= kMostWaiting) {
    recorder_.Write(now, "busy");
    return;
  }
  Answer answer{.kind = kind, .text = std::move(text)};
  if (const auto fault = faults_.Next(kind, now)) {
    recorder_.Write(now, "fault " + std::string(FaultName(fault->kind)));
    answer = faults_.Apply(fault->kind, std::move(answer), fault->amount);
    if (fault->kind == FaultKind::kDrop) drop_ = fault->seconds;
  }
  if (answer.text.empty()) return;
  recorder_.Write(now, "answer " + Quoted(answer.text));
  line_.Queue(std::move(answer.text), now + answer.delay, answer.slowdown);
  if (answer.noise.empty()) return;
  recorder_.Write(now, "noise " + Quoted(answer.noise));
  line_.Queue(std::move(answer.noise), now + answer.delay + kNoiseAfter);
}

Readings SensorUnit::CurrentReadings(Time now) {
  Readings readings{};
  for (const FieldRow& row : FieldTable()) readings[Index(row.field)] = row.default_value;
  for (const ReportedSetting& row : kReported) readings[Index(row.field)] = settings_[Index(row.setting)];

  const auto impose = [&](Field field) {
    auto imposed = pinned_[Index(field)];
    if (!imposed) imposed = scenario_.At(field, ScenarioTime(now));
    if (imposed) readings[Index(field)] = *imposed;
  };
  for (const FieldRow& row : FieldTable()) impose(row.field);

  // Overridden flags apply to the logic too; its two outputs can also be overridden.
  Settings effective = settings_;
  for (const ReportedSetting& row : kReported) effective[Index(row.setting)] = readings[Index(row.field)] != 0.0;
  const auto outputs = logic_.Step(readings, effective, FromSeconds(ToSeconds(now) * speed_));
  readings[Index(Field::kHeater)] = outputs.heater ? 1.0 : 0.0;
  readings[Index(Field::kRelay)] = outputs.relay ? 1.0 : 0.0;
  impose(Field::kHeater);
  impose(Field::kRelay);
  return readings;
}

void SensorUnit::JumpTo(double seconds, Time now) {
  offset_ = seconds - ToSeconds(now) * speed_;
  logic_ = AlarmLogic();
}

double SensorUnit::ScenarioTime(Time now) const {
  // Rounding must not put a jump to 0 before the start.
  return scenario_.Fold(std::max(0.0, offset_ + ToSeconds(now) * speed_));
}

std::string SensorUnit::TakeDue(Time now) {
  bridge_.Put(line_.TakeDue(now), now);
  return bridge_.TakeDue(now);
}

std::optional<Time> SensorUnit::NextDue() const {
  const auto sent = line_.NextDue();
  const auto kept = bridge_.NextDue();
  if (!sent || !kept) return sent ? sent : kept;
  return std::min(*sent, *kept);
}

void SensorUnit::SwitchOff(Time until) {
  off_until_ = until;
  line_.Clear();
  parser_.Reset();
  settings_ = PowerUpSettings();
  logic_ = AlarmLogic();
}

std::optional<double> SensorUnit::TakeDrop() { return std::exchange(drop_, std::nullopt); }

void SensorUnit::LineLost() {
  line_.Clear();
  bridge_.Clear();
  parser_.Reset();
}

}  // namespace orvalis_unit
