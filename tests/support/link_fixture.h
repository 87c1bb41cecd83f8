#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "acquisition/auto_reconnect.h"
#include "acquisition/connector.h"
#include "acquisition/poll_cycle.h"
#include "acquisition/sensor_link.h"
#include "tests/support/alert_recorder.h"
#include "tests/support/fake_event_loop.h"
#include "tests/support/fake_serial_port.h"
#include "tests/support/memory_profile.h"

namespace orvalis::test {

/// Everything from the serial port to the panel's model, with the real parts between a faked port and a faked loop.
class LinkFixture : public testing::Test {
 protected:
  LinkFixture() {
    settings = store.LoadSettings();
    settings.Centigrade = true;
    store.WriteText("COM Port", "/dev/ttyUSB0");
    profile.log.clear();
  }

  /// Connects and throws away what was written down.
  void Connect() {
    connector.Connect();
    loop.Advance(std::chrono::seconds(1));
    ASSERT_TRUE(link.Connected());
    port.calls.clear();
    port.sent.clear();
  }

  /// Lets both timers tick `count` times, each tick followed by its second.
  void Tick(int count, bool auto_connect = false) {
    for (int i = 0; i < count; ++i) {
      poll.Poll();
      reconnect.Tick(auto_connect);
      loop.Advance(std::chrono::seconds(1));
    }
  }

  [[nodiscard]] std::vector<std::string> EventTexts() const {
    std::vector<std::string> texts;
    for (const Event& event : events.events()) texts.push_back(event.text);
    return texts;
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
  ErrorBoundary boundary{panel, events};
  SensorLink link{{.port = port, .loop = loop, .store = store, .panel = panel, .events = events, .options = options}};
  Connector connector{link, boundary};
  AutoReconnect reconnect{{.link = link, .connector = connector, .panel = panel, .events = events, .clock = clock}};
  AlertRecorder given;
  Alerts alerts{given, given, events};
  LogWriter logs{[this](const std::string& text) { events.Record(text); }};
  PollCycle poll{{.loop = loop,
                  .clock = clock,
                  .link = link,
                  .settings = settings,
                  .weather = weather,
                  .panel = panel,
                  .events = events,
                  .boundary = boundary,
                  .alerts = alerts,
                  .logs = logs,
                  .locale = {}}};
};

}  // namespace orvalis::test
