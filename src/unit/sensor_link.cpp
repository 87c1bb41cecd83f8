#include "unit/sensor_link.h"

#include <chrono>
#include <utility>

#include "base/run_time_error.h"
#include "base/text.h"
#include "unit/greeting.h"

namespace orvalis {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// The unit reads its line slowly: every character gets this much time.
constexpr milliseconds kCharacterPause{20};
/// An answer that took longer than this is out of date: the line held it back, or the machine slept meanwhile.
constexpr milliseconds kLongestAnswer = kReceiveTimeout + seconds{1};
/// After so long without a frame, for whatever reason, the unit may have lost power unnoticed.
constexpr seconds kLongestGap{10};
/// A greeting and a first frame take a quarter of a second. What took longer than this may be older answers, which come
/// by chance when they are waited for.
constexpr seconds kPromptConnect{1};
constexpr seconds kLongestRunDry{60};
/// The unit takes a reading before it answers.
constexpr milliseconds kAnswerPause{80};

constexpr auto kClosed = Message::Of("the port was closed");
constexpr std::string_view kGreeting = kGreetingAnswer;
constexpr std::string_view kProceed = "p";
constexpr std::string_view kCommandMark = ":";
constexpr std::string_view kFrameRequest = "F";

}  // namespace

SensorLink::SensorLink(const Parts& parts, std::optional<std::string> port_override)
    : port_(parts.port),
      loop_(parts.loop),
      store_(parts.store),
      status_(parts.status),
      events_(parts.events),
      options_(parts.options),
      port_override_(std::move(port_override)) {
  port_.OnLost([this](const Message& reason) { HandleLost(reason); });
}

LinkState SensorLink::state() const {
  if (connecting_) return *connecting_;
  return port_.Connected() ? LinkState::kConnected : LinkState::kDisconnected;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): a coroutine keeps its own
Task<> SensorLink::Connect(std::optional<std::string> port) {
  if (connecting_ || port_.Connected()) co_return;
  connecting_ = LinkState::kConnecting;
  halt_ = false;
  lost_reason_.clear();
  failure_.clear();
  Message failure;
  try {
    const std::string name = port ? *port : PortName();
    failure = co_await Greet(name);
  } catch (const std::exception& error) {
    failure = MessageOf(error);
  }
  connecting_.reset();
  if (failure.empty()) {
    loss_.reset();
    status_ = Message::Of("Connected to %1").With(port_.Port());
    events_.Record("connected to " + port_.Port());
    co_return;
  }
  port_.SetConnected(false);
  if (!lost_reason_.empty()) failure = lost_reason_;
  status_ = Message::Of("Cannot connect: %1").With(failure);
  events_.Record("connect failed: " + failure.English(), EventLevel::kWarning);
  failure_ = failure;
}

Task<Message> SensorLink::Greet(const std::string& port) {
  status_ = std::string("Attempting to connect");  // as the button says, in every language
  PrepareForUnit(port_, port);
  const std::uint64_t session = ++session_;
  questions_.BeginSession();
  asked_at_.reset();
  silence_ = false;
  late_answers_ = 0;
  port_.SetConnected(true);
  port_.ClearBuffers();

  std::int64_t greeted_at = 0;
  do {  // more than once where an earlier connection was closed over a question
    greeted_at = loop_.TickCount();
    SendGreeting();
    const SerialPort::Received answer = co_await ReceiveCounted(port_, kGreeting.size());
    if (Over(session)) co_return kClosed;
    const GreetingAnswer judged = JudgeGreeting(answer);
    if (judged == GreetingAnswer::kNothing) {
      co_return Message::Of(
          "no answer from the unit on %1 within 4 seconds; check its power, the cable, and whatever may delay the line")
          .With(port_.Port());
    }
    if (judged == GreetingAnswer::kOther) {
      co_return Message::Of("what answers on %1 is not the unit; check the port in the setup").With(port_.Port());
    }
  } while (!questions_.GreetingCame());
  if (!co_await Proceed()) co_return kClosed;
  connecting_ = LinkState::kGreeted;

  SensorFrame frame;
  // A bridge may hand out what was left in it when it is opened.
  port_.ClearBuffers();
  FrameResult result = co_await AskForFrame(frame, kCharacterPause);
  const bool prompt = loop_.TickCount() - greeted_at <= milliseconds(kPromptConnect).count();
  if (result == FrameResult::kComplete && !prompt) {
    if (!co_await LineRunsDry()) {
      co_return Over(session) ? Message(kClosed) : Message::Of("old answers keep coming on %1").With(port_.Port());
    }
    result = co_await AskForFrame(frame, kCharacterPause);
    if (result == FrameResult::kIncomplete) {
      co_return Message::Of("the line to %1 delays the unit's answers").With(port_.Port());
    }
  }
  if (result == FrameResult::kEnded) co_return kClosed;
  if (result == FrameResult::kIncomplete) {
    co_return Message::Of("the unit on %1 greeted, but its first frame was not complete").With(port_.Port());
  }
  questions_.BeginSession();  // the polling has yet to prove the line
  options_.TakeFrom(frame);
  last_sent_.BeginConnection(options_);
  settings_sent_ = false;
  co_return Message();
}

void SensorLink::SendGreeting() {
  orvalis::SendGreeting(port_);
  questions_.GreetingSent();
}

Task<bool> SensorLink::Proceed() {
  const std::uint64_t session = session_;
  for (int i = 0; i < 2; ++i) {
    co_await Pause(loop_, kCharacterPause);
    if (Over(session)) co_return false;
    port_.Transmit(kProceed);
  }
  co_await Pause(loop_, kCharacterPause);
  co_return !Over(session);
}

Task<bool> SensorLink::LineRunsDry() {
  const std::uint64_t session = session_;
  const std::int64_t end = loop_.TickCount() + milliseconds(kLongestRunDry).count();
  // Twice the time-out, because that is as far apart as questions may have been.
  for (int silent = 0; silent < 2;) {
    const SerialPort::Received received = co_await ReceiveTerminated(port_, SensorFrame::kTerminator);
    if (Over(session) || loop_.TickCount() > end) co_return false;
    silent = received.text.empty() ? silent + 1 : 0;
  }
  co_return true;
}

void SensorLink::Disconnect() {
  halt_ = true;
  connecting_.reset();  // a connect under way was abandoned
  loss_.reset();
  failure_.clear();
  const bool was_connected = port_.Connected();
  port_.SetConnected(false);
  status_ = Message::Of("Disconnected");
  if (was_connected) events_.Record("disconnected");
}

Task<SensorLink::FrameResult> SensorLink::RequestFrame(SensorFrame& frame) {
  if (!questions_.FrameOpen() && loop_.TickCount() - answered_at_ > milliseconds(kLongestGap).count()) {
    questions_.FrameAsked();
    silence_ = true;
  }
  if (questions_.FrameOpen()) co_return co_await GreetAgain(frame);
  port_.ClearBuffers();
  co_return co_await AskForFrame(frame, 2 * kCharacterPause);
}

Task<SensorLink::FrameResult> SensorLink::AskForFrame(SensorFrame& frame, milliseconds pause_after) {
  const std::uint64_t session = session_;
  const std::int64_t asked_at = loop_.TickCount();
  asked_at_ = asked_at;
  questions_.FrameAsked();
  port_.Transmit(kCommandMark);
  co_await Pause(loop_, kCharacterPause);
  if (Over(session)) co_return FrameResult::kEnded;
  port_.Transmit(kFrameRequest);
  port_.Expect(SensorFrame::kTerminatorPosition);
  co_await Pause(loop_, kAnswerPause);
  if (Over(session)) co_return FrameResult::kEnded;
  // A time-out leaves what came, and the completeness of the line decides.
  const SerialPort::Received received = co_await ReceiveTerminated(port_, SensorFrame::kTerminator);
  std::string_view text = received.text;
  while (text.starts_with(kGreeting) && questions_.GreetingOpenBeforeFrame()) {
    questions_.GreetingCame();
    text.remove_prefix(kGreeting.size());
  }
  frame = SensorFrame(text);
  if (Over(session)) co_return FrameResult::kEnded;
  if (frame.IsComplete()) {
    asked_at_.reset();
    questions_.FrameAnswered();
  } else {
    questions_.FrameMissing();
    if (!text.empty() && !text.ends_with(SensorFrame::kTerminator)) questions_.AnswerBrokeOff();
    silence_ = silence_ || received.outcome != SerialPort::Outcome::kComplete;
  }
  co_await Pause(loop_, pause_after);
  if (Over(session)) co_return FrameResult::kEnded;
  const bool in_time = loop_.TickCount() - asked_at <= kLongestAnswer.count();
  if (!frame.IsComplete() || !in_time) co_return FrameResult::kIncomplete;
  TakeInTime();
  co_return FrameResult::kComplete;
}

Task<SensorLink::FrameResult> SensorLink::GreetAgain(SensorFrame& frame) {
  const std::uint64_t session = session_;
  co_await Pause(loop_, kCharacterPause);  // for whom every greeting is answered at once
  if (Over(session)) co_return FrameResult::kEnded;
  const std::int64_t end = loop_.TickCount() + milliseconds(kReceiveTimeout).count();
  SendGreeting();
  // Nothing is dropped here: each "W" counts, and one inside of a frame must not.
  std::string line;
  while (loop_.TickCount() <= end) {
    const SerialPort::Received received = co_await ReceiveCounted(port_, 1);
    if (Over(session)) co_return FrameResult::kEnded;
    if (received.outcome != SerialPort::Outcome::kComplete) break;
    if (line.empty() && received.text == kGreeting) {
      // With older greetings open the next one goes out at once, until their number is made up for.
      if (!questions_.GreetingCame()) co_return FrameResult::kIncomplete;
      asked_at_.reset();
      if (!co_await Proceed()) co_return FrameResult::kEnded;
      BeginAfterSilence();
      co_return FrameResult::kIncomplete;
    }
    line += received.text;
    if (!line.ends_with(SensorFrame::kTerminator)) continue;
    if (TakeLateLine(line, frame)) co_return FrameResult::kComplete;
    line.clear();
  }
  if (!line.empty()) questions_.AnswerBrokeOff();
  silence_ = true;
  co_return FrameResult::kIncomplete;
}

void SensorLink::BeginAfterSilence() {
  const std::int64_t now = loop_.TickCount();
  const bool long_one = now - std::exchange(answered_at_, now) > milliseconds(kLongestGap).count();
  if (!std::exchange(silence_, false)) return;
  last_sent_.BeginAfterSilence();
  settings_sent_ = false;
  if (long_one && late_answers_ == 0) events_.Record("the unit answers again: its settings are sent again");
}

bool SensorLink::TakeLateLine(const std::string& line, SensorFrame& frame) {
  const SensorFrame late(line);
  if (!late.IsComplete() || !asked_at_) return false;
  const std::int64_t took = loop_.TickCount() - *asked_at_;
  asked_at_.reset();
  if (took > kLongestAnswer.count()) {
    questions_.FrameCameLate();
    ReportLate(took);
    return false;
  }
  // Only its greeting came first: the unit is there, and was all the time.
  frame = late;
  questions_.FrameAnswered();
  silence_ = false;
  TakeInTime();
  return true;
}

void SensorLink::TakeInTime() {
  answered_at_ = loop_.TickCount();
  questions_.LineProven();
  if (std::exchange(late_answers_, 0) > 0 && status_ == late_status_) status_.clear();
}

void SensorLink::ReportLate(std::int64_t took) {
  const std::string seconds = FormatFixed(static_cast<double>(took) / 1000, 1);
  const bool again = late_answers_ > 0;
  late_status_ =
      again ? Message::Of("The line delays the unit's answers by %1 seconds: none is used").With(seconds)
            : Message::Of("An answer from the unit came %1 seconds after its request and was discarded").With(seconds);
  status_ = late_status_;
  if (++late_answers_ <= 2) events_.Record("late: " + late_status_.English());
}

Task<> SensorLink::PushSettings(const Settings& settings) {
  const std::uint64_t session = session_;
  if (questions_.FrameOpen()) co_return;
  for (std::size_t i = 0; i < kUnitCommandCount; ++i) {
    const UnitCommand& command = UnitCommands()[i];
    const std::int32_t value = command.Value(settings, options_);
    if (!last_sent_.IsDue(i, value)) continue;
    co_await Send(command, i, value);
    if (Over(session)) co_return;
  }
  settings_sent_ = true;
}

Task<> SensorLink::Send(const UnitCommand& command, std::size_t index, std::int32_t value) {
  const std::uint64_t session = session_;
  const std::string characters = command.Encode(value);
  for (const char character : characters) {
    port_.Transmit({&character, 1});
    co_await Pause(loop_, kCharacterPause);
    if (Over(session)) co_return;
  }
  last_sent_.Store(index, value);
  if (const Message cut = command.CutText(value); !cut.empty()) {
    events_.Record(std::string(command.key) + " is " + std::to_string(value) + ": " + cut.English());
  }
}

std::string SensorLink::PortName() {
  if (port_override_) return *port_override_;
  std::string name = store_.Get(*FindSettingKey(kPortKey));
  if (name.empty()) {
    name = kDefaultPort;
    try {
      store_.WriteText(kPortKey, name);
    } catch (const RunTimeError& error) {
      events_.Record(error.what());  // the port is known all the same
    }
  }
  return name;
}

const std::optional<SensorLink::Loss>& SensorLink::LastLoss() {
  if (loss_ && PortName() != loss_->chosen) loss_.reset();
  return loss_;
}

void SensorLink::HandleLost(const Message& reason) {
  lost_reason_ = reason;
  const bool again = connecting_.has_value() && loss_.has_value();
  if (!again) loss_ = {.port = port_.Port(), .session = session_, .chosen = PortName()};
  // A connect that is under way notices the closed port and reports the failure itself.
  if (connecting_) return;
  status_ = Message::Of("Connection lost: %1").With(reason);
  events_.Record("lost: " + reason.English(), EventLevel::kWarning);
}

}  // namespace orvalis
