#include "acquisition/sensor_link.h"

#include <chrono>
#include <utility>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr int kBitsPerSecond = 9600;
constexpr seconds kReceiveTimeout{4};
/// The unit reads its line slowly: every character gets this much time.
constexpr milliseconds kCharacterPause{20};
/// An answer that took longer than this was slept over by the machine, and is not of now.
constexpr milliseconds kLongestAnswer = kReceiveTimeout + seconds{1};
/// The unit takes a reading before it answers.
constexpr milliseconds kAnswerPause{80};

constexpr std::string_view kWake = "#";
constexpr std::string_view kAcknowledge = "\x06";
constexpr std::string_view kGreeting = "W";
constexpr std::string_view kProceed = "p";
constexpr std::string_view kCommandMark = ":";
constexpr std::string_view kFrameRequest = "F";

constexpr std::string_view kPortKey = "COM Port";
constexpr std::string_view kDefaultPort = "2";

}  // namespace

SensorLink::SensorLink(const Parts& parts, std::optional<std::string> port_override)
    : port_(parts.port),
      loop_(parts.loop),
      store_(parts.store),
      panel_(parts.panel),
      events_(parts.events),
      options_(parts.options),
      port_override_(std::move(port_override)) {
  port_.OnLost([this](const std::string& reason) { HandleLost(reason); });
}

Task<> SensorLink::Connect() {
  if (state_ == State::kConnecting || port_.Connected()) co_return;
  state_ = State::kConnecting;
  halt_ = false;
  lost_reason_.clear();
  std::string failure;
  try {
    failure = co_await Greet();
  } catch (const std::exception& error) {
    failure = error.what();
  }
  state_ = State::kIdle;
  if (failure.empty()) {
    panel_.connect.caption = "Connected";
    panel_.status = "Connected to " + port_.Port();
    events_.Record("connected to " + port_.Port());
    co_return;
  }
  port_.SetConnected(false);
  if (!lost_reason_.empty()) failure = lost_reason_;
  ShowNotConnected("Cannot connect: " + failure);
  events_.Record("connect failed: " + failure);
}

Task<std::string> SensorLink::Greet() {
  const std::string name = port_name_ = PortName();
  panel_.connect.caption = "Attempting to connect";
  panel_.status = "Attempting to connect";
  port_.SetPort(name);
  port_.SetSpeed(kBitsPerSecond);
  port_.SetReceiveTimeout(kReceiveTimeout);
  const std::uint64_t session = ++session_;
  port_.SetConnected(true);
  port_.ClearBuffers();

  port_.Transmit(kWake);
  port_.Transmit(kAcknowledge);
  const SerialPort::Received answer = co_await ReceiveCounted(port_, kGreeting.size());
  if (Over(session)) co_return "the port was closed";
  if (answer.outcome != SerialPort::Outcome::kComplete) {
    co_return "no answer from the unit on " + port_.Port() + " within 4 seconds; check its power and the cable";
  }
  if (answer.text != kGreeting) {
    co_return "what answers on " + port_.Port() + " is not the unit; check the port in the setup";
  }

  for (int i = 0; i < 2; ++i) {
    co_await Pause(loop_, kCharacterPause);
    if (Over(session)) co_return "the port was closed";
    port_.Transmit(kProceed);
  }
  co_await Pause(loop_, kCharacterPause);
  if (Over(session)) co_return "the port was closed";
  panel_.connect.checked = true;
  panel_.connect.background = Colour::kGreen;

  SensorFrame frame;
  const FrameResult result = co_await AskForFrame(frame, kCharacterPause);
  if (result == FrameResult::kEnded) co_return "the port was closed";
  if (result == FrameResult::kIncomplete) {
    co_return "the unit on " + port_.Port() + " greeted, but its first frame was not complete";
  }
  options_.TakeFrom(frame);
  last_sent_.BeginConnection(options_);
  co_return "";
}

void SensorLink::Disconnect() {
  halt_ = true;
  state_ = State::kIdle;  // a connect under way was abandoned
  const bool was_connected = port_.Connected();
  port_.SetConnected(false);
  ShowNotConnected("Disconnected");
  if (was_connected) events_.Record("disconnected");
}

Task<SensorLink::FrameResult> SensorLink::RequestFrame(SensorFrame& frame) {
  // An answer that comes late, to an older request, would be taken for the answer to this one, and every later frame
  // would be older than it seems.
  port_.ClearBuffers();
  co_return co_await AskForFrame(frame, 2 * kCharacterPause);
}

Task<SensorLink::FrameResult> SensorLink::AskForFrame(SensorFrame& frame, milliseconds pause_after) {
  const std::uint64_t session = session_;
  const std::int64_t asked_at = loop_.TickCount();
  port_.Transmit(kCommandMark);
  co_await Pause(loop_, kCharacterPause);
  if (Over(session)) co_return FrameResult::kEnded;
  port_.Transmit(kFrameRequest);
  co_await Pause(loop_, kAnswerPause);
  if (Over(session)) co_return FrameResult::kEnded;
  // A time-out leaves what came, and the completeness of the line decides.
  const SerialPort::Received received = co_await ReceiveTerminated(port_, SensorFrame::kTerminator);
  frame = SensorFrame(received.text);
  if (Over(session)) co_return FrameResult::kEnded;
  co_await Pause(loop_, pause_after);
  if (Over(session)) co_return FrameResult::kEnded;
  const bool in_time = loop_.TickCount() - asked_at <= kLongestAnswer.count();
  co_return frame.IsComplete() && in_time ? FrameResult::kComplete : FrameResult::kIncomplete;
}

Task<> SensorLink::PushSettings(const Settings& settings) {
  const std::uint64_t session = session_;
  for (std::size_t i = 0; i < kUnitCommandCount; ++i) {
    const UnitCommand& command = UnitCommands()[i];
    const std::int32_t value = command.Value(settings, options_);
    if (!last_sent_.IsDue(i, value)) continue;
    co_await Send(command, i, value);
    if (Over(session)) co_return;
  }
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

void SensorLink::ShowNotConnected(const std::string& status) {
  panel_.connect.caption = "Click to connect";
  panel_.connect.checked = false;
  panel_.connect.enabled = true;
  panel_.connect.background = Colour::kYellow;
  panel_.status = status;
}

void SensorLink::HandleLost(const std::string& reason) {
  lost_reason_ = reason;
  // A connect that is under way notices the closed port and reports the failure itself.
  if (state_ == State::kConnecting) return;
  ShowNotConnected("Connection lost: " + reason);
  events_.Record("lost: " + reason);
}

}  // namespace orvalis
