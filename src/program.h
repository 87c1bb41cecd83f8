#pragma once

#include <QPointer>
#include <QString>
#include <chrono>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "acquisition/alerts.h"
#include "acquisition/auto_reconnect.h"
#include "acquisition/connector.h"
#include "acquisition/error_boundary.h"
#include "acquisition/log_files.h"
#include "acquisition/log_writer.h"
#include "acquisition/panel_model.h"
#include "acquisition/poll_cycle.h"
#include "acquisition/sensor_link.h"
#include "acquisition/unit_commands.h"
#include "acquisition/weather_state.h"
#include "base/event_list.h"
#include "config/program_flags.h"
#include "config/settings.h"
#include "config/settings_store.h"
#include "config/setup_routine.h"
#include "config/startup.h"
#include "history/history_recorder.h"
#include "platform/line_output.h"
#include "platform/native.h"
#include "platform/qt/command_line.h"
#include "platform/qt/qt_clock.h"
#include "platform/qt/qt_event_loop.h"
#include "platform/qt/qt_http_socket.h"
#include "platform/sqlite/sqlite_history.h"
#include "publish/web_publisher.h"
#include "server/traffic.h"
#include "server/weather.h"
#include "ui/frm_form_submit.h"
#include "ui/frm_hand_box.h"
#include "ui/frm_setup.h"
#include "ui/frm_show.h"
#include "ui/graph_windows.h"
#include "ui/theme.h"

namespace orvalis {

/// How the user's locale writes numbers.
[[nodiscard]] NumberLocale UserLocale();
/// The folder that the user wants the profile store in: as the command line says, or the environment.
[[nodiscard]] std::optional<QString> ChosenProfileFolder(const CommandLine& line);
/// Where logs and pictures go unless the user chooses: beside the executable where that is allowed, as it is for a
/// program unpacked into a folder of its own, otherwise in the user's data folder.
[[nodiscard]] std::string ProgramFolder();
/// Where the history is kept: with the profile when that has a place of its own, otherwise in the user's data folder.
[[nodiscard]] std::filesystem::path HistoryFile(const CommandLine& line);

/// Keeps why the program could not start in the error log, if that can be written.
void LogFailedStart(const std::string& reason);

/// The running program: every part, in the order in which they need each other, and the connections between them.
class Program {
 public:
  /// A program that is there for clients alone waits `client_patience` for the first.
  Program(const CommandLine& line, std::chrono::seconds client_patience);
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;
  ~Program();

  /// Starts up, runs until the program is to end, and shuts down. Returns the exit code. Throws what keeps the program
  /// from starting.
  int Run();

  /// Whether there is a panel to bring.
  bool BringToFront();

  /// Keeps what is to be kept and closes the link, for a system that ends without waiting for `Run` to return.
  void ShutDown() noexcept;

  /// Whether a name look-up goes on that the end of the application would wait for.
  [[nodiscard]] bool LeavesLookUp() const { return http_.LeavesLookUp(); }

 private:
  /// A timer's work, which may go on afterwards.
  template <typename Work>
  void Tick(std::string_view doing, Work work) {
    boundary_.Run(doing, work);
    Refresh();
  }
  /// A click's work, which is done then.
  template <typename Work>
  void Click(std::string_view doing, Work work) {
    boundary_.RunWhole(doing, work);
    Refresh();
  }
  void Refresh();
  /// Says what goes wrong in the background where a person looks.
  void Report(const std::string& text);
  void SpeakOnStandardOutput();
  void OpenPanel();
  /// The setup dialog, hidden until it is asked for.
  void OpenSetup();
  /// The serial ports of the machine, and which one is open.
  [[nodiscard]] std::vector<SerialPortEntry> ListPorts() const;
  /// Runs it, or brings it to the front, for the panel's button and for clients.
  void RunSetup();
  /// The same for a client. Throws RunTimeError when there is no dialog.
  void RunSetupFor(Weather::Done closed);
  void OpenTraffic();
  /// Offers the automation object. Throws RunTimeError when that fails in a program that is there for clients alone.
  void ServeClients();
  void ApplyTheme();
  /// The web publishing window, hidden until it is asked for.
  void OpenWebPublishing();
  /// The buttons for the graphs; their windows are made when they are pressed.
  void OpenGraphs();
  [[nodiscard]] Theme PanelTheme() const;
  void TakePicture();

  CommandLine line_;
  std::chrono::seconds client_patience_;
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
  std::unique_ptr<SoundPlayer> sounds_;
  std::unique_ptr<ProgramStarter> programs_;
  Alerts alerts_;
  LogWriter logs_;
  Leftovers leftovers_;
  SensorLink link_;
  Connector connector_;
  AutoReconnect reconnect_;
  QtHttpSocket http_;
  std::unique_ptr<FtpSender> ftp_;
  std::unique_ptr<CommandStarter> commands_;
  WebPublisher publisher_;
  PollCycle poll_;
  SqliteHistory history_store_;
  HistoryRecorder history_;
  ImmediateSwitches switches_;
  QtIntervalTimer poll_timer_;
  QtIntervalTimer second_timer_;
  LineOutput output_{LineOutput::Stream::kOutput};
  LineOutput error_output_{LineOutput::Stream::kError};
  RotatingLog error_log_;
  std::unique_ptr<frmHandBox> form_;
  std::unique_ptr<PanelWindow> window_;
  std::unique_ptr<frmSetup> setup_;
  std::unique_ptr<GraphWindows> graphs_;
  std::optional<SetupRoutine> setup_routine_;
  std::vector<Weather::Done> setup_waiters_;  ///< clients that wait for the dialog to be closed
  QPointer<frmShow> show_;
  Traffic* traffic_ = nullptr;  ///< the text of `show_` while that is open
  std::unique_ptr<frmFormSubmit> submit_;
  std::optional<Startup> startup_;
  Weather::Parts weather_parts_;
  std::unique_ptr<WeatherServer> server_;  ///< none where clients cannot come
};

}  // namespace orvalis
