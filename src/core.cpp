#include "core.h"

#include <QCoreApplication>
#include <QDir>
#include <QLocale>
#include <QStandardPaths>
#include <chrono>
#include <system_error>
#include <utility>

#include "app/reading_lines.h"
#include "base/path.h"
#include "base/run_time_error.h"
#include "logs/crash_note.h"
#include "platform/system/crash_report.h"
#include "platform/system/safe_file.h"
#include "verdict/explanation.h"

namespace orvalis {
namespace {

/// Where the history is kept: with the profile when that has a place of its own, otherwise in the user's data folder.
std::filesystem::path HistoryFile(const CommandLine& line) {
  const QString folder = ChosenProfileFolder(line).value_or(
      QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/orvalis");
  return (folder + "/history.sqlite").toStdU16String();
}

}  // namespace

NumberLocale UserLocale() {
  const QLocale locale = QLocale::system();
  static const std::string name = locale.name().toStdString();
  return {.decimal_separator = locale.decimalPoint() == "," ? ',' : '.', .name = name.c_str()};
}

std::optional<QString> ChosenProfileFolder(const CommandLine& line) {
  if (line.profile_folder) return QString::fromStdString(*line.profile_folder);
  if (QString folder = qEnvironmentVariable("ORVALIS_PROFILE_DIR"); !folder.isEmpty()) return folder;
  return std::nullopt;
}

std::string ProgramFolder() {
  const QString beside = QCoreApplication::applicationDirPath();
  // Root may write to the system's programs too, but logs do not belong there.
  const bool own = !beside.startsWith("/usr/") && safe_file::CanWrite(beside);
  const QString folder =
      own ? beside : QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + "/orvalis";
  return QDir::toNativeSeparators(folder).toStdString();
}

void LogFailedStart(const std::string& reason) {
  const QtClock clock;
  EventList events(clock);
  LineOutput errors(LineOutput::Stream::kError);
  ErrorLog log(events, clock.style(), [&errors](const std::string& text) { errors.Write("orvalis: " + text); });
  log.Open(PathFromText(ProgramFolder()));
  events.Record("the program could not start: " + reason, EventLevel::kError);
}

Core::Core(const CommandLine& line, std::chrono::seconds client_patience, ServiceManager& manager)
    : line_(line),
      client_patience_(client_patience),
      manager_(manager),
      port_(native::MakeSerialPort()),
      profile_(native::MakeProfile(ChosenProfileFolder(line))),
      utility_(native::MakeUtilityObject()),
      store_(*profile_, ProgramFolder(), UserLocale()),
      events_(clock_),
      boundary_(panel_.status, events_),
      settings_loss_({.store = store_, .panel = panel_, .events = events_}),
      sounds_(native::MakeSoundPlayer([this](const std::string& failure) {
        events_.Record(failure, EventLevel::kError);
        alert_trial_.SoundFailed(failure);
      })),
      programs_(native::MakeProgramStarter()),
      alerts_(*sounds_, *programs_, events_),
      logs_([this](const std::string& text) { Report(text); }),
      link_({.port = *port_,
             .loop = loop_,
             .store = store_,
             .status = panel_.status,
             .events = events_,
             .options = options_},
            line.port),
      connector_(link_, boundary_),
      port_finder_(native::MakePortFinder()),
      reconnect_({.link = link_, .connector = connector_, .events = events_, .clock = clock_, .ports = *port_finder_}),
      observer_({.loop = loop_,
                 .clock = clock_,
                 .store = store_,
                 .settings = settings_,
                 .link = link_,
                 .options = options_,
                 .settings_loss = settings_loss_,
                 .boundary = boundary_,
                 .demo_mode = [this] { return poll_.InDemoMode(); }}),
      verdict_log_([this](const std::string& text) { Report(text); }),
      verdict_records_({.clock = clock_, .settings = settings_, .events = events_, .log = verdict_log_}),
      safety_alerts_({.loop = loop_,
                      .settings = settings_,
                      .observer = observer_,
                      .sounds = *sounds_,
                      .programs = *programs_,
                      .events = events_}),
      alert_trial_({.observer = observer_, .sounds = *sounds_, .programs = *programs_, .events = events_}),
      ftp_(native::MakeFtpSender()),
      commands_(native::MakeCommandStarter()),
      publisher_({.store = store_,
                  .settings = settings_,
                  .weather = weather_,
                  .panel = panel_,
                  .loop = loop_,
                  .clock = clock_,
                  .events = events_,
                  .boundary = boundary_,
                  .socket = http_,
                  .ftp = *ftp_,
                  .commands = *commands_,
                  .write_private = native::WritePrivateFile,
                  .folder = native::FolderOfPictures(store_.program_folder()),
                  .other_programs = !native::SendsPictures(),
                  .to_code_page = native::ToCodePage}),
      poll_({.loop = loop_,
             .clock = clock_,
             .link = link_,
             .settings = settings_,
             .weather = weather_,
             .panel = panel_,
             .events = events_,
             .boundary = boundary_,
             .alerts = alerts_,
             .logs = logs_,
             .observer = observer_,
             .locale = store_.locale(),
             .demo_override = line.demo,
             .uploads = {&publisher_.webcam_schedule(), &publisher_.readings_schedule()},
             .draw = [this] { Refresh(); }}),
      history_store_(HistoryFile(line), clock_, [this](const std::string& text) { Report(text); }),
      history_({.loop = loop_,
                .clock = clock_,
                .store = history_store_,
                .report = [this](const std::string& text) { Report(text); },
                .remember = !line.headless}),
      switches_({.store = store_,
                 .settings = settings_,
                 .link = link_,
                 .connector = connector_,
                 .logs = logs_,
                 .demo_mode = [this] { return poll_.InDemoMode(); }}),
      poll_timer_([this] { Poll(); }),
      setup_timer_([this] { Poll(); }),
      second_timer_([this] {
        boundary_.RunToEnd(Message::Of("watching the settings"), [this] { settings_loss_.Watch(); });
        Tick(Message::Of("reconnecting"), [this] {
          reconnect_.Tick(startup_->AutoConnect() && !poll_.InDemoMode());
          poll_.CheckStaleness();
        });
        boundary_.RunToEnd(Message::Of("judging whether it is safe"), [this] { observer_.Update(); });
      }),
      error_log_(events_, clock_.style(), [this](const std::string& text) { PrintError(text, EventLevel::kError); }),
      weather_parts_{.flags = flags_,
                     .settings = settings_,
                     .weather = weather_,
                     .panel = panel_,
                     .link = link_,
                     .connector = connector_,
                     .logs = logs_,
                     .traffic = traffic_,
                     .locale = store_.locale(),
                     .demo_mode = [this] { return poll_.InDemoMode(); },
                     .expire_verdict = [this] { poll_.CheckStaleness(); },
                     .run_setup =
                         [this](Weather::Done closed) {
                           if (front_ == nullptr) {
                             throw RunTimeError(RunTimeError::kDeviceUnavailable,
                                                "No setup dialog: Orvalis is running without windows");
                           }
                           front_->RunSetup(std::move(closed));
                         },
                     .end_program = [] { QCoreApplication::exit(0); }},
      server_(native::MakeWeatherServer(
          {.create =
               [this](std::string caller) { return std::make_unique<Weather>(weather_parts_, std::move(caller)); },
           .observation = observation_reader_,
           .record = [this](const std::string& text) { events_.Record(text); },
           .ends_with_last_client = line.automation})),
      network_(
          {.sockets = sockets_,
           .loop = loop_,
           .clock = clock_,
           .store = store_,
           .observe = [this]() -> const Observation& { return observer_.Now(); },
           .recorded =
               [this] {
                 history_.Remember();
                 return history_.View();
               },
           .counters = [this] { return CountersNow(); },
           .record = [this](const std::string& text) { events_.Record(text); },
           .complain =
               [this](const Message& text) { panel_.Stand({.cause = StandingMessage::Cause::kNetwork, .text = text}); },
           .traffic = traffic_}),
      mqtt_({.loop = loop_,
             .client = mqtt_client_,
             .store = store_,
             .observe = [this]() -> const Observation& { return observer_.Now(); },
             .record = [this](const std::string& text) { events_.Record(text); }}) {
  const std::filesystem::path folder = PathFromText(ProgramFolder());
  error_log_.Open(folder);
  crash_report::Arm(folder);
  // What closes a roof first: the others write to a disk, which may hang. Each by itself, because one may fail.
  observer_.Listen([this](const Observation& now, const Observer::News& news) {
    if (server_) server_->Announce(now, news);
  });
  observer_.Listen([this](const Observation& now, const Observer::News& news) { network_.Note(now, news); });
  observer_.Listen([this](const Observation& now, const Observer::News& news) { mqtt_.Note(now, news); });
  observer_.Listen([this](const Observation& now, const Observer::News& /*news*/) { safety_alerts_.Note(now); });
  observer_.Listen([this](const Observation& now, const Observer::News& news) { Announce(now, news); });
  poll_.Listen([this](const SensorFrame& frame) { history_.Note(weather_, frame); });
  observer_.Listen([this](const Observation& now, const Observer::News& news) {
    if (news.reasons) manager_.Tell(now.verdict.safe ? "SAFE" : "UNSAFE: " + ReasonNames(now.verdict));
  });
  if (line_.headless && !line_.automation) {
    PrintReadings();
  } else if (line_.headless || native::ErrorsGoToSystemLog()) {
    events_.Listen([this](const Event& event) { PrintError(event.text, event.level); });
  }
  if (const std::string note = TakeCrashNote(folder); !note.empty()) {
    Report(Message::Of("An earlier run ended by a fault; please report it with the backtrace in the error log: %1")
               .With(note));
  }
}

Core::~Core() = default;

Core::Parts Core::parts() {
  return {.line = line_,
          .loop = loop_,
          .style = clock_.style(),
          .store = store_,
          .flags = flags_,
          .settings = settings_,
          .panel = panel_,
          .options = options_,
          .events = events_,
          .boundary = boundary_,
          .settings_loss = settings_loss_,
          .link = link_,
          .connector = connector_,
          .publisher = publisher_,
          .poll = poll_,
          .observer = observer_,
          .history = history_,
          .clock = clock_,
          .switches = switches_,
          .leftovers = leftovers_,
          .alert_trial = alert_trial_,
          .poll_timer = poll_timer_,
          .setup_timer = setup_timer_,
          .traffic = traffic_};
}

int Core::Run(Front* front) {
  front_ = front;
  StartUp(front);
  settings_loss_.Watch();
  observer_.Update();
  publisher_.Load();
  if (front_ != nullptr) front_->ShowSettings();
  ServeClients();
  ApplyNetwork();
  ApplyMqtt();
  if (poll_.InDemoMode()) panel_.status = Message::Of("Demo mode: simulated values");
  Refresh();
  history_.LoadSoon();
  if (front_ != nullptr) front_->Started();
  manager_.Started();
  const int code = QCoreApplication::exec();
  ShutDown();
  return code;
}

void Core::StartUp(Front* front) {
  if (front != nullptr) store_.OfferAssistant();
  startup_.emplace(
      Startup::Parts{.flags = flags_,
                     .utility = *utility_,
                     .store = store_,
                     .settings = settings_,
                     .window = front != nullptr ? &front->panel_window() : nullptr,
                     .switches = switches_,
                     .poll_timer = poll_timer_,
                     .second_timer = second_timer_,
                     .connector = connector_,
                     .logs = logs_,
                     .leftovers = leftovers_,
                     .started_by_user = !line_.automation,
                     .auto_connect_override = (line_.headless && !line_.automation) || line_.port.has_value(),
                     .demo_mode = [this] { return poll_.InDemoMode(); }});
  startup_->Main();
}

void Core::ShutDown() noexcept {
  if (!startup_) return;
  manager_.Stopping();
  setup_timer_.SetEnabled(false);
  boundary_.RunToEnd(Message::Of("giving the last verdict"), [this] { observer_.Stop(); });
  mqtt_.Close();
  network_.Close();
  startup_->Shutdown();  // first: the link is closed and the panel's place kept, whatever the history's disk does
  history_.Flush();
}

void Core::Refresh() {
  if (front_ == nullptr) return;
  ShowTrendsAndSun();
  ShowLink(link_.state(), reconnect_.seconds_left(), panel_);
  panel_.offer_search = !link_.failure().empty() && !poll_.InDemoMode();
  panel_.banner = BannerOf(observer_.Now(), clock_, store_.locale(), UnitsOf(settings_), front_->language());
  front_->Refresh();
}

void Core::ShowTrendsAndSun() {
  const std::int64_t now = history_.Now();
  panel_.trends = panel_.stale ? Trends{} : TrendsOf(history_.Shown(), now, panel_.trends);
  const bool has_place = settings_.Latitude && settings_.Longitude;
  panel_.sun =
      has_place ? DescribeSun({*settings_.Latitude, *settings_.Longitude}, now, clock_, front_->language()) : SunText{};
}

void Core::ApplyNetwork() {
  // What was started for a client ends with it: others could not rely on it.
  if (line_.automation) return;
  Settings settings = settings_;
  if (const QString port = qEnvironmentVariable("ORVALIS_HTTP_PORT"); !port.isEmpty()) {
    settings.NetworkPort = port.toUShort();
  }
  boundary_.RunToEnd(Message::Of("serving the network"), [&] { network_.Apply(settings); });
}

network::Served Core::NetworkNow() const {
  if (line_.automation)
    return {.pages = {}, .trouble = Message::Of("A program that was started for a client serves no others.")};
  return network_.served();
}

void Core::ApplyMqtt() {
  if (line_.automation) return;  // as the network
  boundary_.RunToEnd(Message::Of("publishing over MQTT"), [this] {
    if (settings_.MqttEnabled != 0) network_.Identify(settings_);
    mqtt_.Apply(settings_, network_.station());
  });
}

Message Core::MqttNow() const {
  if (line_.automation) return Message::Of("a program that was started for a client publishes nothing");
  return mqtt_.status();
}

void Core::TryMqtt(const Settings& settings, network::MqttTrial::Done done) {
  mqtt_trial_.Try(settings, std::move(done));
}

void Core::Poll() {
  Tick(Message::Of("polling the unit"), [this] { poll_.Poll(); });
}

std::vector<SerialPortEntry> Core::ListPorts() {
  return WithConnected(native::ListSerialPorts(), store_.Get(*FindSettingKey("COM Port")), port_->Port(),
                       [this](const std::string& name) { return IsConnectedPort(name); });
}

bool Core::SamePort(const std::string& one, const std::string& other) {
  try {
    const std::string device = native::SystemPortName(one);
    const std::string other_device = native::SystemPortName(other);
    std::error_code no_file;  // where ports are no files, or there is none of that name
    return device == other_device || std::filesystem::equivalent(device, other_device, no_file);
  } catch (const RunTimeError&) {
    return false;  // no port has that name
  }
}

bool Core::IsConnectedPort(const std::string& name) const {
  return port_->Connected() && SamePort(name, port_->Port());
}

std::string Core::ChosenPort() const {
  if (line_.port) return *line_.port;
  const std::string port = store_.Get(*FindSettingKey(kPortKey));
  return port.empty() ? std::string(kDefaultPort) : port;
}

void Core::Announce(const Observation& now, const Observer::News& news) {
  if (!now.verdict.safe) poll_.KeepRecord(news.verdict);  // a roof may read it
  verdict_records_.Note(now, news);
  history_.NoteVerdict(now);
}

network::MetricCounters Core::CountersNow() {
  const auto& readings = publisher_.readings().counts();
  const auto& pictures = publisher_.webcam().counts();
  return {.connections = link_.session(),
          .uploads = readings.succeeded + pictures.succeeded,
          .failed_uploads = readings.failed + pictures.failed};
}

void Core::Report(const Message& text) {
  panel_.status = text;
  events_.Record(text.English(), EventLevel::kError);
}

void Core::PrintReadings() {
  poll_.Listen([this](const SensorFrame& frame) {
    const Reading reading{.time = clock_.LocalNow(), .weather = weather_, .frame = frame, .now = observer_.Now()};
    output_.Write(line_.json ? ReadingJson(reading) : ReadingText(reading, clock_.style()));
  });
  if (line_.json) {
    observer_.Listen([this](const Observation& now, const Observer::News& news) {
      if (news.reasons) output_.Write(VerdictJson(clock_.LocalNow(), now));
    });
  }
  const bool on_both = !native::OutputsAreSame();
  events_.Listen([this, on_both](const Event& event) {
    output_.Write(line_.json ? EventJson(event) : EventText(event, clock_.style()));
    if (on_both) PrintError(event.text, event.level);
  });
}

void Core::PrintError(const std::string& text, EventLevel level) {
  error_output_.Write(native::ErrorLinePrefix(level) + "orvalis: " + text);
}

void Core::ServeClients() {
  const bool offered = server_ && server_->Start();
  if (!line_.automation) return;
  if (!offered) {
    throw RunTimeError(RunTimeError::kDeviceUnavailable,
                       "started for a client but cannot serve any; start it without --automation");
  }
  loop_.CallAfter(client_patience_, [this] {
    if (server_->had_clients()) return;
    events_.Record("started for a client, but no client connected");
    QCoreApplication::exit(0);
  });
}

}  // namespace orvalis
