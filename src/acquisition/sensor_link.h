#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "acquisition/panel_model.h"
#include "acquisition/sensor_frame.h"
#include "acquisition/serial_port.h"
#include "acquisition/unit_commands.h"
#include "base/event_list.h"
#include "base/event_loop.h"
#include "base/task.h"
#include "config/settings_store.h"

namespace orvalis {

/// The connection to the sensor unit: greeting, frame requests and commands over the serial port.
/// docs/serial-protocol.md shows who says what when.
class SensorLink {
 public:
  enum class State { kIdle, kConnecting };
  enum class FrameResult {
    kComplete,
    kIncomplete,  ///< a short or broken line, or none in time: ask again
    kEnded,       ///< the link was closed meanwhile
  };
  struct Parts {
    SerialPort& port;
    EventLoop& loop;
    SettingsStore& store;
    PanelModel& panel;
    EventList& events;
    UnitOptions& options;
  };

  /// `port_override` names the port for this run instead of the one in the profile.
  explicit SensorLink(const Parts& parts, std::optional<std::string> port_override = std::nullopt);

  /// Opens the port and greets the unit. Ends with the port open and the first frame read, or closed with the reason on
  /// the status line and in the event list. Does nothing while the port is open or another connect runs.
  Task<> Connect();
  /// Closes the port and ends whatever is under way on it, at once. A running `Connect` must be destroyed before.
  void Disconnect();

  /// Asks for one frame into `frame`, which then holds whatever came. Only while `Ready`.
  Task<FrameResult> RequestFrame(SensorFrame& frame);
  /// Sends every command whose value differs from the copy last sent. Only while `Ready`.
  Task<> PushSettings(const Settings& settings);

  /// Whether the port is open; asked of the port each time.
  [[nodiscard]] bool Connected() const { return port_.Connected(); }
  /// The name of the port of this connection, or of the last one.
  [[nodiscard]] const std::string& port_name() const { return port_name_; }
  [[nodiscard]] State state() const { return state_; }
  /// Tells one connection from another.
  [[nodiscard]] std::uint64_t session() const { return session_; }
  /// Whether frames can be asked for.
  [[nodiscard]] bool Ready() const { return Connected() && state_ == State::kIdle && !halt_; }

 private:
  /// Returns why it failed, or "".
  Task<std::string> Greet();
  Task<FrameResult> AskForFrame(SensorFrame& frame, std::chrono::milliseconds pause_after);
  Task<> Send(const UnitCommand& command, std::size_t index, std::int32_t value);
  [[nodiscard]] std::string PortName();
  void ShowNotConnected(const std::string& status);
  void HandleLost(const std::string& reason);
  /// Whether the connection that `session` began is over; to be asked after every wait.
  [[nodiscard]] bool Over(std::uint64_t session) const { return halt_ || session != session_ || !port_.Connected(); }

  SerialPort& port_;
  EventLoop& loop_;
  SettingsStore& store_;
  PanelModel& panel_;
  EventList& events_;
  UnitOptions& options_;
  std::optional<std::string> port_override_;

  std::string port_name_;
  State state_ = State::kIdle;
  bool halt_ = false;          ///< switched off, by a person, a client or the shutdown; a connect clears it
  std::uint64_t session_ = 0;  ///< counts the openings of the port: a wait may outlive its connection
  std::string lost_reason_;    ///< why the port vanished in the connect under way
  LastSent last_sent_;
};

}  // namespace orvalis
