#include "server/weather.h"

#include <algorithm>
#include <memory>

#include "base/run_time_error.h"
#include "server/observation_members.h"
#include "tests/support/link_fixture.h"

namespace orvalis {
namespace {

using std::chrono::seconds;

TEST(Traffic, PiecesFormLines) {
  Traffic traffic;
  traffic.TrafficStart("A");
  traffic.TrafficEnd(" (done)");
  EXPECT_EQ(traffic.text(), "A (done)\r\n");
  traffic.Clear();
  traffic.TrafficStart("A");
  traffic.TrafficLine("B");
  EXPECT_EQ(traffic.text(), "A\r\nB\r\n");
  traffic.Clear();
  traffic.TrafficChar("x");
  traffic.TrafficChar("x");
  traffic.TrafficStart("C");
  EXPECT_EQ(traffic.text(), "x x\r\nC");
  traffic.Clear();  // closes the open line
  traffic.TrafficLine("D");
  traffic.TrafficEnd("E");  // whatever is open
  EXPECT_EQ(traffic.text(), "D\r\nE\r\n");
}

TEST(Traffic, KeepsTheNewestAndNothingWhilePaused) {
  Traffic traffic;
  for (int i = 0; i < 300; ++i) traffic.TrafficLine("12345678");
  EXPECT_EQ(traffic.text().size(), 2000u);
  traffic.TrafficStart("123");
  EXPECT_TRUE(traffic.text().starts_with("45678\r\n"));
  traffic.Clear();
  traffic.TrafficStart("open");
  traffic.TogglePaused();
  traffic.TrafficLine("lost");
  traffic.TogglePaused();
  traffic.TrafficEnd(" line");
  EXPECT_EQ(traffic.text(), "open line\r\n");
}

class WeatherTest : public test::LinkFixture {
 protected:
  [[nodiscard]] Weather::Parts MakeParts() {
    return {.flags = flags,
            .settings = settings,
            .weather = weather,
            .panel = panel,
            .link = link,
            .connector = connector,
            .logs = logs,
            .traffic = traffic,
            .locale = {},
            .demo_mode = [this] { return settings.DemoMode == 1; },
            .expire_verdict = [this] { poll.CheckStaleness(); },
            .run_setup = [this](Weather::Done closed) { setup_closed = std::move(closed); },
            .end_program = [this] { ++ended; }};
  }

  /// What a call did: "done", the error's number and text, nothing while it waits.
  static void Keep(std::string& answer, const std::exception_ptr& error) {
    try {
      if (error) std::rethrow_exception(error);
      answer = "done";
    } catch (const AutomationError& raised) {
      answer = std::to_string(raised.number()) + " " + raised.what();
    }
  }
  static std::shared_ptr<std::string> SetConnected(Weather& object, bool value) {
    auto answer = std::make_shared<std::string>();
    object.SetConnected(value, [answer](const std::exception_ptr& error) { Keep(*answer, error); });
    return answer;
  }

  [[nodiscard]] std::string TakeTraffic() {
    std::string text = window.text();
    window.Clear();
    return text;
  }

  ProgramFlags flags;
  Traffic window;
  Traffic* traffic = &window;
  Weather::Done setup_closed;
  int ended = 0;
  Weather::Parts parts = MakeParts();
};

TEST_F(WeatherTest, EachPropertyAnswersAndLeavesItsLines) {
  weather.unsafe_indicator = 0;
  weather.ambient_celsius = -9.99;
  weather.clouds = 0.5F;
  weather.rain = 371;
  settings.RainThreshold = 370;
  panel.humidity = "44.6";
  panel.wind = "10.0";
  settings.WindSpeedCloseD = 12.5;
  settings.StepTime = 0.25;
  settings.CanTemp = settings.CanTempComp = true;
  const std::tuple<WeatherMember, WeatherValue, const char*> rows[] = {
      {WeatherMember::kSafe, true, "COM .Safe invoked\r\nSafe: True\r\n"},
      {WeatherMember::kAmbientTemperature, -9.99F, "AmbientTemperature invoked\r\nAmbientTemperature: -9.99\r\n"},
      {WeatherMember::kClouds, 0.5F, "COM .Clouds invoked\r\nCloud Coverage: 0.5\r\n"},
      {WeatherMember::kName, std::string("Orvalis"), "Server name:Orvalis\r\n"},
      {WeatherMember::kPrecipitation, true, "COM .Percipitation invoked\r\nPrecipitation: True\r\n"},
      {WeatherMember::kRelativeHumidity, 0.45F, "COM .RelativeHumididty invoked\r\nRelativeHumidity: 0.45\r\n"},
      {WeatherMember::kWindVelocity, 8.689762F, "COM .WindVelocity invoked\r\nWindVelocity: 8.689762\r\n"},
      {WeatherMember::kConnected, false, "Connected: False\r\n"},
      {WeatherMember::kWindSpeedCloseD, 12, "WindSpeedCloseD: 12\r\n"},
      {WeatherMember::kWindSpeedWarn, 0.25, "WindSpeedWarn: 0.25\r\n"},
      {WeatherMember::kTemperature, -9.99, "Temperature: -9.99\r\n"},
  };
  Weather object(parts);
  for (const auto& [member, value, lines] : rows) {
    EXPECT_EQ(object.Get(member), value) << lines;
    EXPECT_EQ(TakeTraffic(), lines);
  }

  weather.unsafe_indicator = -1;
  EXPECT_EQ(object.Get(WeatherMember::kSafe), WeatherValue(false));
  weather.rain = 370;
  EXPECT_EQ(object.Get(WeatherMember::kPrecipitation), WeatherValue(false));
  panel.humidity.clear();
  EXPECT_THROW(static_cast<void>(object.Get(WeatherMember::kRelativeHumidity)), RunTimeError);
}

// Clients test the number and show the text.
TEST_F(WeatherTest, WhatCannotServeRaisesAndLeavesItsLineOpen) {
  const std::tuple<WeatherMember, const char*, const char*> rows[] = {
      {WeatherMember::kBarometricPressure, "", "COM .BarometricPressure invoked(not implemented)\r\n"},
      {WeatherMember::kWindSpeedWarn, "Property WindSpeedWarn", "WindSpeedWarn: "},
      {WeatherMember::kTemperature, "Property Temperature", "Temperature: "},
      {WeatherMember::kHalt, "Halt", "Halt"},
  };
  // The gates are exchanged: these three open none of those below.
  settings.CanTemp = settings.CanTempComp = settings.CanStepSize = false;
  settings.CanHalt = true;
  flags.moving = true;
  Weather object(parts);
  for (const auto& [member, name, lines] : rows) {
    std::string answer;
    try {
      member == WeatherMember::kHalt ? object.Halt() : static_cast<void>(object.Get(member));
    } catch (...) {
      Keep(answer, std::current_exception());
    }
    EXPECT_EQ(answer, std::string("-2147220480 ") + name + " is not implemented by this Orvalis server.");
    EXPECT_EQ(TakeTraffic(), lines);
  }
  EXPECT_TRUE(flags.moving);

  settings.CanTemp = true;
  EXPECT_NO_THROW(static_cast<void>(object.Get(WeatherMember::kWindSpeedWarn)));
  EXPECT_THROW(static_cast<void>(object.Get(WeatherMember::kTemperature)), AutomationError);
  settings.CanStepSize = true;
  window.Clear();
  object.Halt();
  EXPECT_FALSE(flags.moving);
  EXPECT_EQ(TakeTraffic(), "Halt (done)\r\n");
}

// The machine slept for ten seconds: the first call after it comes before the first tick.
TEST_F(WeatherTest, AnOldVerdictIsNotServedBetweenTicks) {
  Connect(4);
  Weather object(parts);
  EXPECT_EQ(object.Get(WeatherMember::kSafe), WeatherValue(true));
  loop.Sleep(seconds(10));
  EXPECT_EQ(object.Get(WeatherMember::kSafe), WeatherValue(false));
  settings.TempsAvgCount = 301;
  for (const WeatherMember member : {WeatherMember::kAmbientTemperature, WeatherMember::kTemperature}) {
    EXPECT_THROW(static_cast<void>(object.Get(member)), RunTimeError);
  }
}

TEST_F(WeatherTest, WritesWhatIsTickedWhileTheWindowIsOpen) {
  settings.CanTempComp = settings.CanStepSize = true;
  Weather object(parts);
  const auto call_all = [&] {
    static_cast<void>(object.Get(WeatherMember::kName));
    static_cast<void>(object.Get(WeatherMember::kTemperature));
    object.Halt();
    return TakeTraffic();
  };
  weather.ambient_celsius = 5;
  EXPECT_EQ(call_all(), "Server name:Orvalis\r\nTemperature: 5\r\nHalt (done)\r\n");
  window.SetWanted(TrafficCategory::kOther, false);
  EXPECT_EQ(call_all(), "Temperature: 5\r\nHalt (done)\r\n");
  window.SetWanted(TrafficCategory::kTemp, false);
  EXPECT_EQ(call_all(), "Halt (done)\r\n");
  window.SetWanted(TrafficCategory::kMove, false);
  EXPECT_EQ(call_all(), "");
}

TEST_F(WeatherTest, ConnectedWaitsForTheUnitAndForNothingElse) {
  Weather first(parts);
  Weather second(parts);
  const auto one = SetConnected(first, true);
  EXPECT_EQ(TakeTraffic(), "Link: False -> True Connected True (done)\r\n");
  EXPECT_EQ(*one, "");
  EXPECT_EQ(first.Get(WeatherMember::kConnected), WeatherValue(true));  // the flag, before the link is up
  const auto two = SetConnected(second, true);
  loop.Advance(seconds(1));
  EXPECT_EQ(*one + ", " + *two, "done, done");
  EXPECT_EQ(std::count(port.calls.begin(), port.calls.end(), "open"), 1);
  EXPECT_EQ(*SetConnected(first, true), "done");  // at once: the link is up

  // A person started this program, so its link stays.
  window.Clear();
  EXPECT_EQ(*SetConnected(first, false), "done");
  EXPECT_EQ(TakeTraffic(), "Link: True -> False (ignored, not auto launch)\r\n");
  EXPECT_TRUE(link.Connected());

  port.PullOut("the cable was pulled out");
  EXPECT_EQ(first.Get(WeatherMember::kConnected), WeatherValue(false));
  port.silent = true;
  const auto failed = SetConnected(first, true);
  auto gone = std::make_unique<Weather>(parts);
  const auto never = SetConnected(*gone, true);
  gone.reset();
  loop.Advance(seconds(5));
  EXPECT_EQ(*failed, "-2147220478 The Orvalis unit is not connected");
  EXPECT_EQ(*never, "");
  EXPECT_FALSE(flags.connected);

  settings.DemoMode = 1;
  port.calls.clear();
  EXPECT_EQ(*SetConnected(first, true), "done");
  EXPECT_TRUE(port.calls.empty());
  EXPECT_EQ(first.Get(WeatherMember::kConnected), WeatherValue(true));
}

TEST_F(WeatherTest, ListsCallsWithCallerAndAnswerOnceTheyAreAnswered) {
  Weather object(parts, "D-Bus :1.7");
  const auto listed = [&] {
    std::string rows;
    for (const TrafficCall& call : window.TakeCalls())
      rows += call.caller + "|" + call.member + "|" + call.answer + "; ";
    return rows;
  };
  static_cast<void>(object.Get(WeatherMember::kName));
  EXPECT_THROW(static_cast<void>(object.Get(WeatherMember::kDewPoint)), AutomationError);
  EXPECT_EQ(listed(), "D-Bus :1.7|Name|Orvalis; D-Bus :1.7|DewPoint| is not implemented by this Orvalis server.; ");
  port.silent = true;
  const auto failed = SetConnected(object, true);
  EXPECT_EQ(listed(), "") << "not yet answered";
  loop.Advance(seconds(5));
  EXPECT_EQ(listed(), "D-Bus :1.7|Connected = True|The Orvalis unit is not connected; ");
  object.SetupDialog([](const std::exception_ptr&) {});
  traffic = nullptr;  // the window is closed, and another opened
  static_cast<void>(object.Get(WeatherMember::kName));
  Traffic other;
  traffic = &other;
  setup_closed({});
  EXPECT_EQ(listed() + std::to_string(other.TakeCalls().size()), "0");
}

TEST_F(WeatherTest, TheLastClientTakesTheLinkAndTheProgramWithIt) {
  flags.started_by_user = false;
  auto first = std::make_unique<Weather>(parts);
  auto second = std::make_unique<Weather>(parts);
  EXPECT_EQ(flags.client_count, 2);
  SetConnected(*first, true);
  loop.Advance(seconds(1));
  window.Clear();
  EXPECT_EQ(*SetConnected(*first, false), "done");
  EXPECT_EQ(TakeTraffic(), "Link: True -> False (ignored, not last user)\r\n");
  EXPECT_TRUE(link.Connected());

  second.reset();
  EXPECT_EQ(flags.client_count, 1);
  EXPECT_EQ(ended, 0);
  // The link is closed as asked, and the client is told that it is.
  EXPECT_EQ(*SetConnected(*first, false), "-2147220478 The Orvalis unit is not connected");
  EXPECT_EQ(TakeTraffic(), "Link: True -> FalseConnected False (done)\r\n");
  EXPECT_FALSE(link.Connected());

  first.reset();
  EXPECT_EQ(ended, 1);
  flags.client_count = 32767;
  EXPECT_THROW(Weather{parts}, RunTimeError);

  flags = {};
  { Weather object(parts); }
  EXPECT_EQ(flags.client_count, 0);
  EXPECT_EQ(ended, 1);
}

TEST_F(WeatherTest, SetupReturnsWhenTheDialogIsClosed) {
  auto object = std::make_unique<Weather>(parts);
  std::string answer;
  object->SetupDialog([&](const std::exception_ptr& error) { Keep(answer, error); });
  EXPECT_EQ(TakeTraffic(), "SetupDialog");
  EXPECT_EQ(answer, "");
  setup_closed({});
  EXPECT_EQ(answer, "done");
  EXPECT_EQ(TakeTraffic(), " (done)\r\n");

  // What kept it from being shown is the client's error, and leaves the line open as every error does.
  answer.clear();
  object->SetupDialog([&](const std::exception_ptr& error) { Keep(answer, error); });
  setup_closed(std::make_exception_ptr(AutomationError(ErrNotImplemented, "the settings are damaged")));
  EXPECT_TRUE(answer.ends_with("the settings are damaged")) << answer;
  EXPECT_EQ(TakeTraffic(), "SetupDialog");

  answer.clear();
  object->SetupDialog([&](const std::exception_ptr& error) { Keep(answer, error); });
  object.reset();
  setup_closed({});
  EXPECT_EQ(answer, "");
}

TEST_F(WeatherTest, TheObservationIsJudgedAtEachLook) {
  const ObservationReader reader(observer, parts.traffic);
  const auto error = [&](std::string_view name) -> int {
    try {
      static_cast<void>(KnownValue(reader.Look(name), name));
      return 0;
    } catch (const RunTimeError& raised) {
      return raised.number();
    }
  };
  Connect(1);
  Measure("R=0121", 16);
  EXPECT_EQ(KnownValue(reader.Look("rain_counts"), "rain_counts"), 121);
  EXPECT_EQ(error("rain"), 9);
  window.Clear();
  EXPECT_TRUE(reader.Look("Safe").verdict.safe);
  loop.Advance(seconds(11));  // asleep: nothing was updated
  EXPECT_FALSE(reader.Look("").verdict.safe);
  EXPECT_EQ(TakeTraffic(), "Observation.Safe: safe\r\nObservation: unsafe (stale)\r\n");
  EXPECT_EQ(error("rain_counts"), 13);
}

}  // namespace
}  // namespace orvalis
