#pragma once

#include <string>

#include "app/poll_cycle.h"
#include "app/setup_routine.h"
#include "tests/support/alert_recorder.h"
#include "tests/support/fake_event_loop.h"
#include "tests/support/fake_port_finder.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/memory_profile.h"
#include "unit/auto_reconnect.h"
#include "unit/connector.h"
#include "unit/sensor_link.h"

namespace orvalis::test {

/// Everything from the serial port to the panel's model: the real parts between a faked port and a faked event loop.
struct LinkWorld {
  LinkWorld() {
    settings = store.LoadSettings();
    settings.Centigrade = true;
    store.WriteText("COM Port", "/dev/ttyUSB0");
    profile.log.clear();
  }

  [[nodiscard]] PollCycle::Parts PollParts() {
    return {.loop = loop,
            .clock = clock,
            .link = link,
            .settings = settings,
            .weather = weather,
            .panel = panel,
            .events = events,
            .boundary = boundary,
            .alerts = alerts,
            .logs = logs,
            .observer = observer,
            .locale = {}};
  }

  /// One tick of both timers, followed by its second or another `pause`.
  void Tick(bool auto_connect, std::chrono::seconds pause = std::chrono::seconds(1)) {
    poll.Poll();
    observer.Update();
    reconnect.Tick(auto_connect);
    loop.Advance(pause);
  }

  /// The connect control as the panel shows it now.
  [[nodiscard]] const PanelModel::ConnectControl& ConnectControl() {
    ShowLink(link.state(), reconnect.seconds_left(), panel);
    return panel.connect;
  }

  FakeEventLoop loop;
  FakeClock clock;
  FakeSerialPort port{loop};
  MemoryProfile profile;
  SettingsStore store{profile, "/opt/orvalis", {}};
  Settings settings;
  WeatherState weather;
  PanelModel panel;
  UnitOptions options;
  EventList events{clock};
  ErrorBoundary boundary{panel.status, events};
  SensorLink link{
      {.port = port, .loop = loop, .store = store, .status = panel.status, .events = events, .options = options}};
  Connector connector{link, boundary};
  FakePortFinder ports;
  AutoReconnect reconnect{{.link = link, .connector = connector, .events = events, .clock = clock, .ports = ports}};
  AlertRecorder alerted;
  Alerts alerts{alerted, alerted, events};
  LogWriter logs{[this](const std::string& text) { events.Record(text); }};
  SettingsLoss settings_loss{{.store = store, .panel = panel, .events = events}};
  Observer observer{{.loop = loop,
                     .clock = clock,
                     .store = store,
                     .settings = settings,
                     .link = link,
                     .options = options,
                     .settings_loss = settings_loss,
                     .boundary = boundary,
                     .demo_mode = [this] { return poll.InDemoMode(); }}};
  PollCycle poll{PollParts()};
  bool made_up = false;  ///< as the command line's demo mode does it: the setting knows nothing of it
  ImmediateSwitches switches{
      {.store = store, .settings = settings, .link = link, .connector = connector, .logs = logs, .demo_mode = [this] {
         return made_up || poll.InDemoMode();
       }}};
};

}  // namespace orvalis::test
