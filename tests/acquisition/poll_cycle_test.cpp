#include "acquisition/poll_cycle.h"

#include <stdexcept>

#include "base/run_time_error.h"
#include "tests/support/link_fixture.h"

namespace orvalis {
namespace {

using std::chrono::hours;
using std::chrono::milliseconds;
using std::chrono::seconds;

class PollCycleTest : public test::LinkFixture {
 protected:
  PollCycleTest() {
    poll.Listen([this](const SensorFrame&) { ++frames; });
  }
  int frames = 0;
};

// Expected figures worked with bc from the frame's fields: HUM=0520 TP=-02000 TA=+00500 WND=0020 R=0120 LGT=1000.
TEST_F(PollCycleTest, OneWorkingCycleBringsAFrameToThePanel) {
  Connect();
  Tick(1);
  EXPECT_EQ(frames, 0) << "the first tick after the start does no work";
  EXPECT_EQ(panel.sky, "999");
  EXPECT_FALSE(panel.safe.has_value());
  Tick(2);
  EXPECT_EQ(frames, 1);
  EXPECT_NEAR(weather.humidity_percent, 48.866653, 1e-5);
  EXPECT_NEAR(weather.dew_point_celsius, -4.881002, 1e-5);
  EXPECT_NEAR(weather.clear_sky_celsius, -20.223233, 1e-5);
  EXPECT_DOUBLE_EQ(weather.difference_celsius, 25);
  EXPECT_EQ(panel.ambient, "5.0");
  EXPECT_EQ(panel.body, "6.0");
  EXPECT_EQ(panel.sky, "-20.0");
  EXPECT_EQ(panel.humidity, "48.9");
  EXPECT_EQ(panel.dew_point, "-4.9");
  EXPECT_EQ(panel.wind, "18.0");
  EXPECT_EQ(panel.cloud.text, "Clear");
  EXPECT_EQ(panel.wind_word.text, "Windy");
  EXPECT_EQ(panel.rain_word.text, "Dry");
  EXPECT_EQ(panel.light_word.text, "Dark");
  EXPECT_EQ(panel.safe, true);
  EXPECT_FALSE(panel.stale);
  EXPECT_EQ(panel.averaging, "");
}

TEST_F(PollCycleTest, FahrenheitIsForShowingOnly) {
  settings.Centigrade = false;
  Connect();
  Tick(4);
  EXPECT_EQ(panel.ambient, "41.0");
  EXPECT_EQ(panel.sky, "-4.0");
  EXPECT_EQ(panel.difference, "25.0");
  EXPECT_DOUBLE_EQ(weather.ambient_celsius, 5);
}

// The clear-sky temperature and the difference come from the ambient temperature as shown, 5.1 for 5.06.
TEST_F(PollCycleTest, TheDifferenceIsTakenFromWhatIsShown) {
  port.frame.replace(58, 6, "+00506");
  Connect();
  Tick(4);
  EXPECT_DOUBLE_EQ(weather.difference_celsius, 25.1);
}

TEST_F(PollCycleTest, TheFaultMarkReddensTheHumidity) {
  port.frame.replace(4, 4, "0999");
  Connect();
  Tick(4);
  EXPECT_EQ(panel.humidity_background, Colour::kRed);
  EXPECT_NE(panel.humidity, "");
  port.frame.replace(4, 4, "0998");
  Tick(2);
  EXPECT_EQ(panel.humidity_background, Colour::kWhite);
  EXPECT_EQ(panel.sky_background, Colour::kWhite);
}

TEST_F(PollCycleTest, AnEmptySelectorCountsAsZeroOnce) {
  panel.humidity_selector = "";
  Connect();
  Tick(3);
  EXPECT_NEAR(weather.humidity_percent, 44.246652, 1e-5);
  EXPECT_EQ(panel.humidity_selector, "200");
  Tick(2);
  EXPECT_NEAR(weather.humidity_percent, 48.866653, 1e-5);
}

TEST_F(PollCycleTest, BrokenFramesAreAskedForAgainAndNeverUsed) {
  Connect();
  Tick(4);
  const std::string good = port.frame;
  std::string warm = good;
  warm.replace(58, 6, "+03000");
  for (const std::string& broken : {warm.substr(0, 110) + "#", warm.substr(0, 116), warm.substr(5)}) {
    port.next_frames = {broken};
    frames = 0;
    Tick(8);
    EXPECT_GE(frames, 1);
    EXPECT_EQ(panel.ambient, "5.0") << broken;
  }
  // Whole, but full of garbage: used as it reads, and not safe.
  std::string garbage(116, '\xff');
  garbage[10] = '\0';
  port.frame = garbage + "#";
  Tick(4);
  EXPECT_EQ(panel.safe, false);
  EXPECT_EQ(panel.ambient, "0.0");
}

// The everyday fault: the unit is off for a day while its adapter stays plugged in.
TEST_F(PollCycleTest, ADayOfSilenceIsShownAsStaleAndEndsWithTheFirstGoodFrame) {
  Connect();
  Tick(4);
  port.silent = true;
  Tick(9);
  EXPECT_FALSE(panel.stale);
  Tick(2);
  EXPECT_TRUE(panel.stale);
  EXPECT_EQ(events.events().back().text, "stale: no complete frame since 21:04:05");
  const std::size_t listed = events.events().size();
  Tick(86'400);
  EXPECT_EQ(events.events().size(), listed) << "one event, not one a second";
  EXPECT_TRUE(link.Connected());
  EXPECT_EQ(panel.ambient, "5.0") << "the last values stay";
  EXPECT_EQ(poll.seconds_since_frame(), 32767);
  frames = 0;
  port.silent = false;
  Tick(6);
  EXPECT_GE(frames, 1);
  EXPECT_FALSE(panel.stale);
  EXPECT_EQ(events.events().back().text, "fresh again: complete frames are coming in");
}

// A warm evening before the outage must not make a cold, cloudy night look clear.
TEST_F(PollCycleTest, AveragesBeginAnewAfterAGap) {
  settings.TempsAvgCount = 20;
  port.frame.replace(58, 6, "+02500");
  Connect();
  Tick(60);
  EXPECT_EQ(panel.ambient, "25.0");
  port.silent = true;
  Tick(3600);
  port.silent = false;
  port.frame.replace(58, 6, "-00500");
  port.frame.replace(37, 6, "-00600");
  Tick(6);
  EXPECT_FALSE(panel.stale);
  EXPECT_EQ(panel.ambient, "");
  EXPECT_EQ(panel.cloud.text, "");
  EXPECT_EQ(weather.cloud.text, "Cloudy");
  Tick(44);
  EXPECT_EQ(panel.ambient, "-5.0");
  EXPECT_EQ(panel.cloud.text, "Cloudy");
}

TEST_F(PollCycleTest, DemoValuesDoNotLeakIntoReadings) {
  settings.TempsAvgCount = 10;
  settings.DemoMode = 1;
  Connect();
  Tick(100);
  EXPECT_EQ(panel.wind_gust, "90.0");
  settings.DemoMode = 0;
  port.frame.replace(29, 4, "0000");
  Tick(4);
  EXPECT_FALSE(panel.demo);
  EXPECT_EQ(panel.ambient, "");
  EXPECT_EQ(panel.wind_gust, "0.0");
}

TEST_F(PollCycleTest, AnAmbientSensorThatDiedIsNotShownAsFresh) {
  Connect();
  Tick(4);
  port.frame.replace(58, 6, "+19999");
  Tick(4);
  EXPECT_EQ(panel.ambient, "5.0") << "a missing reading or two repeat the average";
  Tick(20);
  EXPECT_EQ(panel.ambient, "");
  EXPECT_EQ(panel.cloud.text, "");
  EXPECT_DOUBLE_EQ(weather.ambient_celsius, 5);
  port.frame = test::LiveFrame();
  Tick(2);
  EXPECT_EQ(panel.ambient, "5.0");
}

TEST_F(PollCycleTest, TheSilenceOfANewConnectionIsNewsAgain) {
  Connect();
  Tick(4);
  port.silent = true;
  Tick(14);
  connector.Disconnect();
  port.silent = false;
  connector.Connect();
  loop.Advance(milliseconds(500));
  port.silent = true;
  Tick(20);
  EXPECT_TRUE(events.events().back().text.starts_with("stale: ")) << events.events().back().text;
}

TEST_F(PollCycleTest, TwoStandingErrorsAreListedOnceEach) {
  for (int i = 0; i < 10; ++i) {
    boundary.Run("polling the unit", [] { throw RunTimeError(RunTimeError::kOverflow, "one"); });
    boundary.Run("reconnecting", [] { throw std::runtime_error("two"); });
  }
  EXPECT_EQ(events.events().size(), 2u);
  boundary.RunWhole("reconnecting", [] {});
  EXPECT_EQ(panel.status, "");
  boundary.RunWhole("reconnecting", [] { throw std::runtime_error("two"); });
  EXPECT_EQ(events.events().size(), 3u) << "it had gone well in between";
}

// Answers that piled up while the unit was stuck are old: none may be shown as the answer to a new request.
TEST_F(PollCycleTest, LateAnswersAreDroppedBeforeTheNextRequest) {
  Connect();
  Tick(4);
  std::string old = port.frame;
  old.replace(58, 6, "+01100");
  port.next_frames = {port.frame + old + old + old};
  Tick(2);
  EXPECT_EQ(panel.ambient, "5.0");
  port.frame.replace(58, 6, "+00600");
  Tick(2);
  EXPECT_EQ(panel.ambient, "6.0");
}

TEST_F(PollCycleTest, ASleepingMachineAgesTheValues) {
  Connect();
  Tick(4);
  EXPECT_FALSE(panel.stale);
  loop.Sleep(hours(3));
  port.silent = true;
  poll.Poll();
  EXPECT_TRUE(panel.stale);
}

TEST_F(PollCycleTest, ATickDuringAWorkingCycleOnlyCounts) {
  Connect();
  Tick(4);
  port.answer_delay = milliseconds(3500);
  const auto before = poll.sample_count();
  Tick(5);
  EXPECT_LE(poll.sample_count(), before + 2);
  EXPECT_TRUE(events.events().back().text.starts_with("connected")) << events.events().back().text;
}

TEST_F(PollCycleTest, WithoutAPortThereIsNoFrameAndNoTraffic) {
  Tick(40);
  EXPECT_EQ(frames, 0);
  EXPECT_TRUE(port.calls.empty());
  EXPECT_EQ(poll.sample_count(), 20);
  EXPECT_TRUE(panel.stale);
}

// 15 ticks a line, compared on working ticks: the dry line first, then wet and dry in turn.
TEST_F(PollCycleTest, DemoModeAlternatesItsLinesWithoutTraffic) {
  Connect();
  settings.DemoMode = 1;
  std::string course;
  poll.Listen([&](const SensorFrame& frame) { course += frame.text() == kDryDemoLine ? 'd' : 'w'; });
  Tick(96);
  EXPECT_EQ(course.size(), 48u);
  EXPECT_EQ(course.substr(0, 15), "ddddddddddddddd");
  EXPECT_EQ(course.find('w') * 2 + 2, 32u) << "the second switch, 16 ticks after the first on a working tick";
  EXPECT_EQ(course.substr(15, 16), "wwwwwwwwdddddddd");
  EXPECT_TRUE(port.calls.empty());
  EXPECT_EQ(panel.demo, true);
  EXPECT_FALSE(panel.stale);
}

TEST_F(PollCycleTest, WhatCannotBeConvertedIsReportedOnceAndKeepsTheVerdict) {
  Connect();
  Tick(4);
  port.frame.replace(58, 6, "-24312");  // the pole of the dew point formula
  port.frame[83] = '1';
  Tick(20);
  EXPECT_EQ(panel.safe, false);
  EXPECT_TRUE(panel.stale);
  const auto texts = EventTexts();
  EXPECT_EQ(std::count_if(texts.begin(), texts.end(),
                          [](const std::string& text) { return text.starts_with("Error while polling the unit"); }),
            1);
  port.frame = test::LiveFrame();
  Tick(2);
  EXPECT_FALSE(panel.stale);
  EXPECT_EQ(panel.ambient, "5.0");
}

TEST_F(PollCycleTest, AveragingSaysHowFarItIs) {
  settings.TempsAvgCount = 3;
  Connect();
  Tick(3);
  EXPECT_EQ(panel.averaging, "Averageing 1 of 3");
  EXPECT_EQ(panel.ambient, "") << "the start value is no temperature";
  Tick(4);
  EXPECT_EQ(panel.averaging, "Final Average 5.0");
}

TEST_F(PollCycleTest, TheGustForgetsAfterFiveMinutes) {
  Connect();
  Tick(4);
  port.frame.replace(29, 4, "0100");
  Tick(2);
  port.frame.replace(29, 4, "0010");
  Tick(200);
  EXPECT_EQ(panel.wind_gust, "90.0");
  EXPECT_EQ(panel.wind, "9.0");
  Tick(110);
  EXPECT_EQ(panel.wind_gust, "9.0");
}

}  // namespace
}  // namespace orvalis
