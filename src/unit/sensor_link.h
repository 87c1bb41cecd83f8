#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "base/event_list.h"
#include "base/event_loop.h"
#include "base/message.h"
#include "base/task.h"
#include "config/settings_store.h"
#include "reading/sensor_frame.h"
#include "unit/link_state.h"
#include "unit/open_questions.h"
#include "unit/serial_port.h"
#include "unit/unit_commands.h"

namespace orvalis {

/// The connection to the sensor unit: greeting, frame requests and commands over the serial port.
/// docs/serial-protocol.md shows who says what when.
class SensorLink {
 public:
  enum class FrameResult {
    kComplete,
    kIncomplete,  ///< a short or broken line, or none in time: ask again
    kEnded,       ///< the link was closed meanwhile
  };
  struct Parts {
    SerialPort& port;
    EventLoop& loop;
    SettingsStore& store;
    Message& status;  ///< the line that a person reads, which others write too
    EventList& events;
    UnitOptions& options;
  };

  /// `port_override` names the port for this run instead of the one in the profile.
  explicit SensorLink(const Parts& parts, std::optional<std::string> port_override = std::nullopt);

  /// Opens the port and greets the unit. Ends with the port open and the first frame read, or closed with the reason on
  /// the status line and in the event list. Does nothing while the port is open or another connect runs. `port` is used
  /// instead of the chosen one.
  Task<> Connect(std::optional<std::string> port = std::nullopt);
  /// Closes the port and ends whatever is under way on it, at once. A running `Connect` must be destroyed before.
  void Disconnect();

  /// Asks for one frame into `frame`, which then holds whatever came. A complete one was measured at most five seconds
  /// ago. While an answer to an older request may still come it greets the unit instead, and is incomplete. Only while
  /// `Ready`.
  Task<FrameResult> RequestFrame(SensorFrame& frame);
  /// Sends every command whose value differs from the copy last sent; nothing while the unit has to be greeted first.
  /// Only while `Ready`.
  Task<> PushSettings(const Settings& settings);

  /// The port, as `SerialPort::Port` has it.
  [[nodiscard]] std::string port() const { return port_.Port(); }
  /// A port that vanished while it was open.
  struct Loss {
    std::string port;
    std::uint64_t session = 0;
    std::string chosen;  ///< the port that the user had chosen
  };
  /// The last one. Nothing once the link is connected again or was disconnected on purpose, or when another port was
  /// chosen meanwhile.
  [[nodiscard]] const std::optional<Loss>& LastLoss();

  /// Why the last connect failed; "" when it did not, or when the link was disconnected since.
  [[nodiscard]] const Message& failure() const { return failure_; }

  /// Whether some settings have not been sent since the unit was last greeted, which may have lost them.
  [[nodiscard]] bool SettingsPending() const { return !settings_sent_; }

  /// Whether the port is open; asked of the port each time.
  [[nodiscard]] bool Connected() const { return port_.Connected(); }
  [[nodiscard]] LinkState state() const;
  /// Whether a connect is under way.
  [[nodiscard]] bool connecting() const { return connecting_.has_value(); }
  /// Tells one connection from another.
  [[nodiscard]] std::uint64_t session() const { return session_; }
  /// Whether frames can be asked for.
  [[nodiscard]] bool Ready() const { return state() == LinkState::kConnected && !halt_; }

 private:
  /// Returns why it failed, or nothing. `port` must outlive it.
  Task<Message> Greet(const std::string& port);
  void SendGreeting();
  /// The end of a greeting that was answered; false when the link was closed.
  Task<bool> Proceed();
  /// Waits until nothing has come for eight seconds; false when that takes too long or the link was closed.
  Task<bool> LineRunsDry();
  Task<FrameResult> AskForFrame(SensorFrame& frame, std::chrono::milliseconds pause_after);
  /// Greets during a connection, so that earlier requests are closed. Complete if a current answer arrived meanwhile,
  /// otherwise incomplete.
  Task<FrameResult> GreetAgain(SensorFrame& frame);
  /// The unit was greeted: what it may have lost is due again.
  void BeginAfterSilence();
  /// A line that arrived while waiting for a greeting; true if it is a current frame.
  bool TakeLateLine(const std::string& line, SensorFrame& frame);
  void TakeInTime();
  void ReportLate(std::int64_t milliseconds);
  Task<> Send(const UnitCommand& command, std::size_t index, std::int32_t value);
  /// The port that the user chose.
  [[nodiscard]] std::string PortName();
  void HandleLost(const Message& reason);
  /// Whether the connection that `session` began is over; to be asked after every wait.
  [[nodiscard]] bool Over(std::uint64_t session) const { return halt_ || session != session_ || !port_.Connected(); }

  SerialPort& port_;
  EventLoop& loop_;
  SettingsStore& store_;
  Message& status_;
  EventList& events_;
  UnitOptions& options_;
  std::optional<std::string> port_override_;

  std::optional<LinkState> connecting_;  ///< kConnecting or kGreeted while a connect is under way
  bool halt_ = false;                    ///< switched off, by a person, a client or the shutdown; a connect clears it
  std::uint64_t session_ = 0;            ///< counts the openings of the port: a wait may outlive its connection
  Message lost_reason_;                  ///< why the port vanished in the connect under way
  Message failure_;
  std::optional<Loss> loss_;
  LastSent last_sent_;
  bool settings_sent_ = false;  ///< all of them, since the unit was greeted

  OpenQuestions questions_;
  std::optional<std::int64_t> asked_at_;  ///< TickCount of the request for a frame whose answer is still to come
  std::int64_t answered_at_ = 0;          ///< TickCount of the last frame that came in time
  bool silence_ = false;                  ///< the unit did not answer, and may have lost power
  int late_answers_ = 0;                  ///< since then
  Message late_status_;
};

}  // namespace orvalis
