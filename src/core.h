#pragma once

#include <QString>
#include <chrono>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "app/alert_trial.h"
#include "app/alerts.h"
#include "app/leftovers.h"
#include "app/observer.h"
#include "app/panel_window.h"
#include "app/poll_cycle.h"
#include "app/program_flags.h"
#include "app/safety_alerts.h"
#include "app/service_manager.h"
#include "app/settings_loss.h"
#include "app/setup_routine.h"
#include "app/startup.h"
#include "app/verdict_records.h"
#include "base/error_boundary.h"
#include "base/event_list.h"
#include "base/message.h"
#include "config/settings.h"
#include "config/settings_store.h"
#include "history/history_recorder.h"
#include "logs/error_log.h"
#include "logs/log_writer.h"
#include "logs/verdict_log.h"
#include "network/mqtt/mqtt_publisher.h"
#include "network/mqtt/mqtt_trial.h"
#include "network/network_front.h"
#include "panel/panel_model.h"
#include "platform/native.h"
#include "platform/qt/command_line.h"
#include "platform/qt/mosquitto_client.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_http_socket.h"
#include "platform/qt/qt_sockets.h"
#include "platform/sqlite/sqlite_history.h"
#include "platform/system/line_output.h"
#include "publish/web_publisher.h"
#include "reading/weather_state.h"
#include "server/observation_members.h"
#include "server/traffic.h"
#include "server/weather.h"
#include "unit/auto_reconnect.h"
#include "unit/connector.h"
#include "unit/sensor_link.h"
#include "unit/unit_commands.h"

namespace orvalis {

/// How the user's locale writes numbers.
[[nodiscard]] NumberLocale UserLocale();
/// The user's folder for the profile store, from the command line or the environment.
[[nodiscard]] std::optional<QString> ChosenProfileFolder(const CommandLine& line);
/// Where logs and pictures go unless the user chooses: beside the executable if that folder is writable, as for a
/// program unpacked into its own folder, otherwise in the user's data folder. Never below /usr, not even for root.
[[nodiscard]] std::string ProgramFolder();

/// Keeps why the program could not start in the error log, if that can be written.
void LogFailedStart(const std::string& reason);

/// The windows, as the core sees them.
class Front {
 public:
  virtual ~Front() = default;

  /// The panel's window, which start-up places and shows.
  [[nodiscard]] virtual PanelWindow& panel_window() = 0;
  /// The settings have been loaded.
  virtual void ShowSettings() = 0;
  /// The models may have changed.
  virtual void Refresh() = 0;
  /// Runs the setup dialog for a client, or brings the one that is open to the front.
  virtual void RunSetup(Weather::Done closed) = 0;
  /// The start is complete and has reported everything.
  virtual void Started() = 0;
  virtual void BringToFront() = 0;
  /// Of the person at the windows.
  [[nodiscard]] virtual const Language& language() const = 0;
  /// Whether a thread is blocked on a disk, so that only the end of the process stops it.
  [[nodiscard]] virtual bool LeavesThread() const = 0;
};

/// The program without its windows: all parts, in the order of their dependencies, and the connections between them.
class Core {
 public:
  /// What the windows show and work on.
  struct Parts {
    const CommandLine& line;
    EventLoop& loop;
    const TimeStyle& style;
    SettingsStore& store;
    ProgramFlags& flags;
    Settings& settings;
    PanelModel& panel;
    UnitOptions& options;
    EventList& events;
    ErrorBoundary& boundary;
    SettingsLoss& settings_loss;
    SensorLink& link;
    Connector& connector;
    WebPublisher& publisher;
    PollCycle& poll;
    Observer& observer;
    HistoryRecorder& history;
    const Clock& clock;
    ImmediateSwitches& switches;
    Leftovers& leftovers;
    AlertTrial& alert_trial;
    IntervalTimer& poll_timer;
    IntervalTimer& setup_timer;
    Traffic*& traffic;  ///< the text of the traffic window while that is open
  };

  /// A program that is there for clients alone waits `client_patience` for the first. `manager` outlives the core.
  Core(const CommandLine& line, std::chrono::seconds client_patience, ServiceManager& manager);
  Core(const Core&) = delete;
  Core& operator=(const Core&) = delete;
  ~Core();

  [[nodiscard]] Parts parts();

  /// Starts up, runs until the program is to end, and shuts down. `front` is null in a program without windows. Returns
  /// the exit code. Throws if the program cannot start.
  int Run(Front* front);

  /// Saves everything and closes the link, for a session that ends without waiting for `Run` to return.
  void ShutDown() noexcept;

  /// Updates the windows from the models.
  void Refresh();
  /// Serves the network as the settings say now.
  void ApplyNetwork();
  /// What the network can reach now.
  [[nodiscard]] network::Served NetworkNow() const;
  /// Publishes over MQTT as the settings say now.
  void ApplyMqtt();
  /// What is published now, or why nothing is.
  [[nodiscard]] Message MqttNow() const;
  /// Tries out whether a broker can be reached as `settings` say.
  void TryMqtt(const Settings& settings, network::MqttTrial::Done done);
  /// Adds a line to the event list as soon as the program runs: then whatever shows the list listens.
  void Note(const std::string& text) {
    loop_.CallAfter(std::chrono::milliseconds(0), [this, text] { events_.Record(text); });
  }
  /// Whether two names, as the key "COM Port" takes them, mean the same port. False for what no port can be called.
  [[nodiscard]] static bool SamePort(const std::string& one, const std::string& other);
  /// Whether the link has the port `name` open.
  [[nodiscard]] bool IsConnectedPort(const std::string& name) const;
  /// The port that the link would open now.
  [[nodiscard]] std::string ChosenPort() const;
  /// The serial ports to choose from, with the one that is connected.
  [[nodiscard]] std::vector<SerialPortEntry> ListPorts();

  /// Whether a name look-up, a transfer or a write is running in a thread, which a normal end of the application would
  /// wait for or conflict with.
  [[nodiscard]] bool LeavesThread() const {
    return http_.LeavesLookUp() || ftp_->LeavesThread() || MosquittoClient::LeavesThread() ||
           (front_ != nullptr && front_->LeavesThread());
  }

 private:
  /// A timer's work, which may go on afterwards.
  template <typename Work>
  void Tick(Phrase doing, Work work) {
    boundary_.Run(doing, work);
    Refresh();
  }
  void StartUp(Front* front);
  /// A second has passed.
  void Poll();
  [[nodiscard]] network::MetricCounters CountersNow();
  /// Brings what the panel derives from the history and the place up to date.
  void ShowTrendsAndSun();
  /// What follows from an update of the observation.
  void Announce(const Observation& now, const Observer::News& news);
  /// Shows what goes wrong in the background where a person looks.
  void Report(const Message& text);
  /// A line for each working cycle and each event on standard output; messages on standard error.
  void PrintReadings();
  /// A line on standard error, which may be the system's log.
  void PrintError(const std::string& text, EventLevel level);
  /// Offers the automation object. Throws RunTimeError when that fails in a program that is there for clients alone.
  void ServeClients();

  CommandLine line_;
  std::chrono::seconds client_patience_;
  ServiceManager& manager_;
  QtEventLoop loop_;
  QtClock clock_;
  std::unique_ptr<SerialPort> port_;
  std::unique_ptr<Profile> profile_;
  std::unique_ptr<UtilityObject> utility_;
  SettingsStore store_;
  ProgramFlags flags_;
  Settings settings_;
  WeatherState weather_;
  PanelModel panel_;
  UnitOptions options_;
  EventList events_;
  ErrorBoundary boundary_;
  SettingsLoss settings_loss_;
  std::unique_ptr<SoundPlayer> sounds_;
  std::unique_ptr<ProgramStarter> programs_;
  Alerts alerts_;
  LogWriter logs_;
  Leftovers leftovers_;
  SensorLink link_;
  Connector connector_;
  std::unique_ptr<PortFinder> port_finder_;
  AutoReconnect reconnect_;
  Observer observer_;
  VerdictLog verdict_log_;
  VerdictRecords verdict_records_;
  SafetyAlerts safety_alerts_;
  AlertTrial alert_trial_;
  QtHttpSocket http_;
  std::unique_ptr<FtpSender> ftp_;
  std::unique_ptr<CommandStarter> commands_;
  WebPublisher publisher_;
  PollCycle poll_;
  SqliteHistory history_store_;
  HistoryRecorder history_;
  ImmediateSwitches switches_;
  QtIntervalTimer poll_timer_;
  QtIntervalTimer setup_timer_;  ///< the setup dialog's own, while that is open
  QtIntervalTimer second_timer_;
  LineOutput output_{LineOutput::Stream::kOutput};
  LineOutput error_output_{LineOutput::Stream::kError};
  ErrorLog error_log_;
  std::optional<Startup> startup_;
  Front* front_ = nullptr;      ///< none without windows
  Traffic* traffic_ = nullptr;  ///< none while the traffic window is closed
  Weather::Parts weather_parts_;
  ObservationReader observation_reader_{observer_, traffic_};
  std::unique_ptr<WeatherServer> server_;  ///< null where clients are not supported
  QtSockets sockets_;
  network::NetworkFront network_;
  MosquittoClient mqtt_client_;
  network::MqttPublisher mqtt_;
  MosquittoClient mqtt_trial_client_;
  network::MqttTrial mqtt_trial_{mqtt_trial_client_, loop_};
};

}  // namespace orvalis
