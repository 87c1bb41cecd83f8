#include "unit/sensor_link.h"

#include "tests/support/link_fixture.h"

namespace orvalis {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using test::Strings;

class SensorLinkTest : public test::LinkFixture {
 protected:
  /// What goes over the line in so many ticks.
  std::string Sent(int ticks) {
    port.sent.clear();
    Tick(ticks);
    return port.sent;
  }
};

TEST_F(SensorLinkTest, ConnectsInItsFixedOrderAndPace) {
  connector.Connect();
  EXPECT_EQ(link.state(), LinkState::kConnecting);
  loop.Advance(milliseconds(179));  // 20 + 20 + 20, then 20 + 80 + 20
  EXPECT_EQ(link.state(), LinkState::kGreeted);
  loop.Advance(milliseconds(1));
  EXPECT_EQ(link.state(), LinkState::kConnected);
  EXPECT_EQ(port.calls,
            (Strings{"port /dev/ttyUSB0", "speed 9600", "time-out 4", "open", "clear", "send #", "send \x06",
                     "receive 1", "send p", "send p", "clear", "send :", "send F", "receive until #"}));
  EXPECT_TRUE(ConnectControl().checked);
  // From the frame: AH=1 AR=1 RB=0 AW=1 AL=0 AC=1
  EXPECT_TRUE(options.allow_heater && options.allow_relay && options.allow_wind && options.allow_clouds);
  EXPECT_FALSE(options.force_heater || options.force_relay || options.allow_light || options.allow_rain);
}

TEST_F(SensorLinkTest, EveryFailureClosesThePortAndSaysWhich) {
  using Port = test::FakeSerialPort;
  const RunTimeError no_port(RunTimeError::kFileNotFound, "the port does not exist");
  const std::pair<std::function<void(Port&)>, const char*> rows[] = {
      {[](Port& p) { p.silent = true; }, "no answer"},
      {[](Port& p) { p.greeting = "X"; }, "not the unit"},
      {[](Port& p) { p.greeting = "w"; }, "not the unit"},
      {[](Port& p) { p.frame = "HUM=0000#"; }, "first frame was not complete"},
      {[&](Port& p) { p.open_failure = no_port; }, "does not exist"},
  };
  for (const auto& [spoil, status] : rows) {
    SCOPED_TRACE(status);
    port.silent = false;
    port.greeting = "W";
    port.frame = test::LiveFrame();
    spoil(port);
    connector.Connect();
    loop.Advance(seconds(10));
    EXPECT_FALSE(link.Connected() || ConnectControl().checked);
    EXPECT_EQ(ConnectControl().background, Colour::kYellow);
    EXPECT_NE(panel.status.English().find(status), std::string::npos) << panel.status.English();
    EXPECT_TRUE(LastEvent().starts_with("connect failed: "));
    EXPECT_EQ(link.state(), LinkState::kDisconnected);
  }
}

TEST_F(SensorLinkTest, AnEmptyPortIsTheSecondAndIsWrittenBack) {
  store.WriteText("COM Port", "");
  connector.Connect();
  EXPECT_EQ(port.calls.front(), "port 2");
  EXPECT_EQ(profile.At("COM Port"), "2");
}

TEST_F(SensorLinkTest, ConnectsAskedForMeanwhileJoinTheOneUnderWay) {
  int answered = 0;
  for (int i = 0; i < 3; ++i) connector.Connect([&](bool connected) { answered += connected ? 1 : 100; });
  loop.Advance(seconds(1));
  EXPECT_EQ(answered, 3);
  EXPECT_EQ(std::count(port.calls.begin(), port.calls.end(), "open"), 1);
}

// In a pause of the greeting, and while the unit's answer is awaited.
TEST_F(SensorLinkTest, SwitchingOffEndsAnAttemptAtOnceAndTheNextIsAWholeOne) {
  for (const auto moment : {milliseconds(30), milliseconds(1000)}) {
    bool first = true;
    bool second = false;
    port.silent = moment == milliseconds(1000);
    connector.Connect([&](bool now) { first = now; });
    loop.Advance(moment);
    connector.Disconnect();
    EXPECT_FALSE(first || connector.connecting());
    EXPECT_EQ(panel.status.English(), "Disconnected");
    port.silent = false;
    connector.Connect([&](bool now) { second = now; });
    loop.Advance(seconds(1));
    EXPECT_TRUE(second);
    connector.Disconnect();
  }
}

TEST_F(SensorLinkTest, APortThatVanishesWhileConnectingIsOneFailureWithItsReason) {
  port.silent = true;
  connector.Connect();
  loop.Advance(seconds(1));
  port.PullOut("the adapter was pulled out");
  EXPECT_EQ(EventTexts(), Strings{"connect failed: the adapter was pulled out"});
  EXPECT_FALSE(connector.connecting());
}

// The first cycle after a connection sends every number, later ones what changed; switches start from the unit's own.
TEST_F(SensorLinkTest, PushesWhatDiffersFromTheCopyLastSent) {
  Connect();
  EXPECT_EQ(Sent(3), ":Sh020:ST060:SW036:SR350:SX-005:SL950:SC19:SM9:Sd122:F");
  EXPECT_EQ(Sent(1), ":F");
  settings.RainThreshold = 1234;  // three digits go over the line
  settings.CloudsThreshold = 2.5;
  settings.TPTempHysteresis = 0.1;
  options.allow_wind = false;
  options.allow_rain = true;
  EXPECT_EQ(Sent(2), ":Ar1:AW0:Sh001:SR234:SX+002:F");
  EXPECT_EQ(LastEvent(), "RainThreshold is 1234: the unit gets 234 (it takes three digits)");
  Tick(2);
  settings.LightThreshold = -7;
  settings.CloudsThreshold = 1e300;
  EXPECT_EQ(Sent(2), ":SX+647:SL007:F");
  // A new connection: perhaps another unit, and nobody knows whether that one alarms at rain.
  connector.Disconnect();
  Connect();
  EXPECT_FALSE(options.allow_rain);
  Tick(4);
  EXPECT_TRUE(port.sent.starts_with(":Sh001:ST060")) << port.sent;
}

// It lost power, and reports what it starts with. How its rain alarm stood, and whether it was forced while it may
// switch by itself, is not known: that stays its own.
TEST_F(SensorLinkTest, AUnitThatWasSwitchedOffGetsItsSettingsAndSwitchesAgain) {
  Connect(4);
  options.allow_light = true;
  options.force_heater = true;
  Tick(2);
  Silence(9);
  options.allow_clouds = false;  // by the user, meanwhile
  port.frame = test::LiveFrame("AW=0 AL=0 RB=1");
  port.silent = false;
  std::string verdicts;
  poll.Listen([&](const SensorFrame&) { verdicts += port.sent + "|"; });
  EXPECT_TRUE(Sent(7).ends_with(":F"));
  verdicts.resize(verdicts.find('|'));
  EXPECT_EQ(verdicts.substr(verdicts.rfind('\x06') + 1),
            "pp:AH1:SH1:AR1:AX0:AL1:AW1:Sh020:ST060:SW036:SR350:SX-005:SL950:SC19:SM9:Sd122:F")
      << "before a verdict is taken";
  EXPECT_EQ(Sent(2), ":F");
}

TEST_F(SensorLinkTest, CharactersOfACommandArePacedOneByOne) {
  Connect(4);
  port.calls.clear();
  settings.RainOnTime = 61;
  Tick(1);
  poll.Poll();
  loop.Advance(milliseconds(59));
  EXPECT_EQ(port.calls, (Strings{"send :", "send S", "send T"}));
  loop.Advance(milliseconds(1));
  EXPECT_EQ(port.calls.back(), "send 0");
}

TEST_F(SensorLinkTest, AVanishedPortIsShownAndCountedDownFrom) {
  Connect(3);
  port.PullOut("the adapter was pulled out");
  EXPECT_EQ(panel.status.English(), "Connection lost: the adapter was pulled out");
  EXPECT_FALSE(ConnectControl().checked);
  EXPECT_EQ(LastEvent(), "lost: the adapter was pulled out");
  auto_connect = true;
  Tick(1);
  EXPECT_EQ(LastEvent(), "Not connected, AutoConnect enabled, starting wait to reconnect: 11/21/2026 09:04 PM");
  EXPECT_EQ(ConnectControl().caption, "AutoConnect Enabled Will attempt reconnect in 119 secs");
  Tick(118);
  EXPECT_FALSE(link.Connected());
  Tick(1);
  EXPECT_TRUE(link.Connected());
  Tick(1);
  EXPECT_EQ(LastEvent(), "Reconnect succeeded: 11/21/2026 09:04 PM");
}

TEST_F(SensorLinkTest, AFailedReconnectBeginsTheNextWait) {
  port.silent = true;
  auto_connect = true;
  Tick(130);
  std::string course;
  for (const std::string& text : EventTexts()) course += text.substr(0, text.find_first_of(":,")) + "; ";
  EXPECT_EQ(course, "Not connected; connect failed; Reconnect failed; Not connected; ");
}

// A pause of the old connection that ends in the new one must not speak on it.
TEST_F(SensorLinkTest, AWaitOfAnOlderConnectionDoesNotDisturbTheNewOne) {
  Connect(5);
  poll.Poll();
  loop.Advance(milliseconds(10));  // ":" was sent, "F" is due in 10 ms
  connector.Disconnect();
  connector.Connect();
  port.calls.clear();
  loop.Advance(milliseconds(175));
  EXPECT_EQ(port.calls, (Strings{"send p", "send p", "clear", "send :", "send F", "receive until #"}));
}

}  // namespace
}  // namespace orvalis
