#include "app/poll_cycle.h"

#include <algorithm>
#include <stdexcept>

#include "base/run_time_error.h"
#include "tests/support/link_fixture.h"

namespace orvalis {
namespace {

using std::chrono::milliseconds;
using test::LiveFrame;
using test::Strings;

class PollCycleTest : public test::LinkFixture {
 protected:
  PollCycleTest() {
    poll.Listen([this](const SensorFrame&) { ++frames; });
  }
  int frames = 0;
};

// Worked with bc from the frame's fields: HUM=0520 TP=-02000 TA=+00500 WND=0020 R=0120 LGT=1000.
TEST_F(PollCycleTest, OneWorkingCycleBringsAFrameToThePanel) {
  Connect(1);
  EXPECT_EQ(frames, 0) << "the first tick after the start does no work";
  EXPECT_EQ(weather.unsafe_indicator, WeatherState::kNoVerdict);
  Tick(2);
  EXPECT_EQ(frames, 1);
  EXPECT_EQ((Strings{panel.ambient, panel.body, panel.sky, panel.humidity, panel.dew_point, panel.wind}),
            (Strings{"5.0", "6.0", "-20.0", "48.9", "-4.9", "18.0"}));
  using Words = std::vector<std::string_view>;
  EXPECT_EQ((Words{panel.cloud.text, panel.wind_word.text, panel.rain_word.text, panel.light_word.text}),
            (Words{"Clear", "Windy", "Dry", "Dark"}));
  EXPECT_EQ(weather.unsafe_indicator, 0);
  EXPECT_FALSE(panel.stale);
}

TEST_F(PollCycleTest, ChosenUnitsAreForShowingOnly) {
  settings.Centigrade = false;
  settings.WindUnit = 1;
  Connect(4);
  EXPECT_EQ((Strings{panel.ambient, panel.sky, panel.shown.difference}), (Strings{"41.0", "-4.0", "45.0"}));
  EXPECT_EQ((Strings{panel.difference, panel.wind}), (Strings{"25.0", "18.0"})) << "what clients read";
  EXPECT_EQ((Strings{panel.shown.wind, panel.shown.wind_average, panel.shown.wind_gust}), Strings(3, "29.0"));
  EXPECT_DOUBLE_EQ(weather.ambient_celsius, 5);
}

// The clear-sky temperature and the difference come from the ambient temperature as shown, 5.1 for 5.06.
TEST_F(PollCycleTest, TheDifferenceIsTakenFromWhatIsShown) {
  port.frame = LiveFrame("TA=+00506");
  Connect(4);
  EXPECT_DOUBLE_EQ(weather.difference_celsius, 25.1);
}

TEST_F(PollCycleTest, TheFaultMarkReddensTheHumidity) {
  port.frame = LiveFrame("HUM=0999");
  Connect(4);
  EXPECT_EQ(panel.humidity_background, Colour::kRed);
  Measure("HUM=0998", 2);
  EXPECT_EQ(panel.humidity_background, Colour::kWhite);
  EXPECT_EQ(panel.sky_background, Colour::kWhite);
}

TEST_F(PollCycleTest, TheSelectorIsAWholeNumberAndAnEmptyOneCountsAsZeroOnce) {
  panel.humidity_selector = "";
  Connect(3);
  EXPECT_NEAR(weather.humidity_percent, 44.246652, 1e-5);
  EXPECT_EQ(panel.humidity_selector, "200");
  for (const auto& [typed, humidity] : {std::pair{"200", 48.866653}, {"1.4", 44.246652}, {"1.6", 48.866653}}) {
    panel.humidity_selector = typed;
    Tick(2);
    EXPECT_NEAR(weather.humidity_percent, humidity, 1e-5) << typed;
  }
}

TEST_F(PollCycleTest, BrokenFramesAreAskedForAgainAndNeverUsed) {
  Connect(4);
  const std::string warm = LiveFrame("TA=+03000");
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
  EXPECT_EQ(weather.unsafe_indicator, -1);
  EXPECT_EQ(panel.ambient, "0.0");
}

// The everyday fault: the unit is off for a day while its adapter stays plugged in.
TEST_F(PollCycleTest, ADayOfSilenceIsShownAsStaleAndEndsWithTheFirstGoodFrame) {
  Connect(4);
  Silence(9);
  EXPECT_FALSE(panel.stale);
  Tick(2);
  EXPECT_TRUE(panel.stale);
  EXPECT_EQ(LastEvent(), "stale: no complete frame since 21:04:05");
  const std::size_t listed = events.events().size();
  Tick(86'400);
  EXPECT_EQ(events.events().size(), listed) << "one event, not one a second";
  EXPECT_TRUE(link.Connected());
  EXPECT_EQ(panel.ambient, "5.0") << "the last values stay";
  EXPECT_EQ(poll.seconds_since_frame(), 32767);
  EXPECT_EQ(weather.unsafe_indicator, -1);
  frames = 0;
  port.silent = false;
  Tick(6);
  EXPECT_GE(frames, 1);
  EXPECT_FALSE(panel.stale);
  EXPECT_EQ(LastEvent(), "fresh again: receiving complete frames");
  EXPECT_EQ(weather.unsafe_indicator, 0);
}

TEST_F(PollCycleTest, AKeptVerdictOutlivesASilenceButNotDemoMode) {
  settings.KeepVerdict = 1;
  Connect(4);
  Silence(60);
  EXPECT_TRUE(panel.stale);
  EXPECT_EQ(weather.unsafe_indicator, 0);
  settings.DemoMode = 1;
  Tick(8);
  settings.DemoMode = 0;
  poll.CheckStaleness();
  EXPECT_EQ(weather.unsafe_indicator, -1);
}

// 9999 is what the setup stores for a typing error.
TEST_F(PollCycleTest, ACountWithoutAveragesIsSaidForAsLongAsItStands) {
  Connect(4);
  settings.TempsAvgCount = 9999;
  Measure("TA=+02500", 2);
  const auto notice = [this] { return std::string(panel.StandingText(StandingMessage::Cause::kAveragingCount)); };
  EXPECT_NE(notice().find("\"TempsAvgCount\" is 9999"), std::string::npos) << notice();
  EXPECT_EQ(LastEvent(), notice());
  EXPECT_EQ((Strings{panel.ambient, panel.humidity, panel.averaging, panel.sky}), (Strings{"", "", "", "-20.0"}));
  EXPECT_EQ(panel.cloud.text, "");
  Silence(20);
  EXPECT_NE(notice(), "");
  settings.TempsAvgCount = 10;
  Measure("TA=+02500", 6);
  EXPECT_EQ(notice(), "");
  EXPECT_EQ(panel.ambient, "25.0");
}

// A warm evening before the outage must not make a cold, cloudy night look clear.
TEST_F(PollCycleTest, AveragesBeginAnewAfterAGap) {
  settings.g_bchkEnableSounds = settings.g_bchkCloudSounds = 1;
  settings.g_sCloudSounds = "cloud.wav";
  settings.TempsAvgCount = 20;
  port.frame = LiveFrame("TA=+02500");
  Connect(20);
  EXPECT_EQ(panel.ambient, "") << "the first pass after the start";
  EXPECT_EQ(alerted.given, "") << "the sky is clear, and nobody can tell";
  Tick(40);
  EXPECT_EQ(panel.ambient, "25.0");
  Silence(3600);
  Measure("TA=+00100 TP=-02200", 7);  // the greeting first, then two frames
  EXPECT_EQ((Strings{panel.ambient, std::string(panel.cloud.text), panel.averaging.substr(0, 10)}),
            (Strings{"1.0", "Clear", "Averageing"}));
  EXPECT_DOUBLE_EQ(weather.ambient_celsius, 1);
  EXPECT_EQ(alerted.given, "");
  Silence(14);
  Measure("TA=-00500 TP=-00600", 5);
  EXPECT_EQ(panel.ambient, "-5.0");
  EXPECT_EQ(panel.cloud.text, "Cloudy");
  EXPECT_EQ(alerted.given, "cloud.wav ");
}

TEST_F(PollCycleTest, DemoValuesDoNotLeakIntoReadings) {
  settings.TempsAvgCount = 10;
  settings.DemoMode = 1;
  Connect(100);
  EXPECT_EQ(panel.wind_gust, "90.0");
  settings.DemoMode = 0;
  Silence(2);
  EXPECT_EQ(weather.unsafe_indicator, -1);
  Measure("WND=0000 TA=+00700", 4);
  EXPECT_FALSE(panel.demo);
  EXPECT_EQ(panel.ambient, "7.0");
  EXPECT_EQ(panel.wind_gust, "0.0");
}

TEST_F(PollCycleTest, AnAmbientSensorThatDiedIsNotShownAsFresh) {
  Connect(4);
  Measure("TA=+19999", 4);
  EXPECT_EQ(panel.ambient, "5.0") << "a missing reading or two repeat the average";
  Tick(20);
  EXPECT_EQ(panel.ambient, "");
  EXPECT_EQ(panel.cloud.text, "");
  EXPECT_EQ(weather.cloud.text, "Cloudy") << "in doubt, for who acts on clouds";
  EXPECT_DOUBLE_EQ(weather.ambient_celsius, 5);
  Measure("", 2);
  EXPECT_EQ(panel.ambient, "5.0");
}

TEST_F(PollCycleTest, TheSilenceOfANewConnectionIsNewsAgain) {
  Connect(4);
  Silence(14);
  connector.Disconnect();
  port.silent = false;
  connector.Connect();
  loop.Advance(milliseconds(500));
  Silence(20);
  EXPECT_TRUE(LastEvent().starts_with("stale: ")) << LastEvent();
}

TEST_F(PollCycleTest, TwoStandingErrorsAreListedOnceEach) {
  for (int i = 0; i < 10; ++i) {
    boundary.Run(Message::Of("polling the unit"), [] { throw RunTimeError(RunTimeError::kOverflow, "one"); });
    boundary.Run(Message::Of("reconnecting"), [] { throw std::runtime_error("two"); });
  }
  EXPECT_EQ(events.events().size(), 2u);
  boundary.RunToEnd(Message::Of("reconnecting"), [] {});
  EXPECT_EQ(panel.status.English(), "");
  boundary.RunToEnd(Message::Of("reconnecting"), [] { throw std::runtime_error("two"); });
  EXPECT_EQ(events.events().size(), 3u) << "it had gone well in between";
}

// Answers that piled up while the unit was stuck are old: none may be shown as the answer to a new request.
TEST_F(PollCycleTest, LateAnswersAreDroppedBeforeTheNextRequest) {
  Connect(4);
  const std::string old = LiveFrame("TA=+01100");
  port.next_frames = {port.frame + old + old + old};
  Tick(2);
  EXPECT_EQ(panel.ambient, "5.0");
  Measure("TA=+00600", 2);
  EXPECT_EQ(panel.ambient, "6.0");
}

// The answer came before the machine fell asleep, and is taken up behind it.
TEST_F(PollCycleTest, AnAnswerFromBeforeASleepIsNotOfNow) {
  Connect(5);
  std::string verdicts;
  poll.Listen([&](const SensorFrame& frame) { verdicts += frame.text()[83]; });
  poll.Poll();
  loop.Advance(milliseconds(50));
  port.frame[83] = '1';
  loop.Sleep(milliseconds(14'000));
  loop.Advance(milliseconds(3000));
  EXPECT_EQ(verdicts, "1");
}

TEST_F(PollCycleTest, ATickDuringAWorkingCycleOnlyCounts) {
  Connect(4);
  port.answer_delay = milliseconds(3500);
  const auto before = poll.sample_count();
  Tick(20);
  EXPECT_LE(poll.sample_count(), before + 6) << "one in four seconds, and perhaps the one under way";
  EXPECT_FALSE(panel.stale);
  EXPECT_TRUE(LastEvent().starts_with("connected")) << LastEvent();
}

// 15 ticks a line, compared on every second tick: the dry line first, then wet and dry in turn for eight frames each.
TEST_F(PollCycleTest, DemoModeAlternatesItsLinesWithoutTraffic) {
  Connect();
  settings.DemoMode = 1;
  std::string course;
  poll.Listen([&](const SensorFrame& frame) { course += frame.text() == kDryDemoLine ? 'd' : 'w'; });
  Tick(96);
  EXPECT_EQ(course, std::string(15, 'd') + "wwwwwwww" + "dddddddd" + "wwwwwwww" + "dddddddd" + "w");
  EXPECT_TRUE(port.calls.empty());
  EXPECT_EQ(panel.demo, true);
  EXPECT_FALSE(panel.stale);
}

TEST_F(PollCycleTest, WhatCannotBeConvertedIsReportedOnceAndKeepsTheVerdict) {
  settings.g_bchkEnableSounds = settings.g_bchkRainSounds = 1;
  settings.g_sRainSounds = "rain.wav";
  Connect(4);
  EXPECT_TRUE(alerted.given.empty());
  std::string verdicts;  // the pole of the dew point formula, with a relay that is on and one that is off
  Measure("TA=-24312 R=0900 RB=1", 4);
  verdicts += std::to_string(weather.unsafe_indicator);
  Measure("TA=-24312 R=0900 RB=0", 2);
  verdicts += std::to_string(weather.unsafe_indicator);
  for (int i = 0; i < 20; ++i) {
    Tick(1);
    if (i >= 6) verdicts += std::to_string(weather.unsafe_indicator);
  }
  EXPECT_EQ(verdicts.substr(0, 6), "10-1-1") << "taken back with the rest, and for good";
  EXPECT_EQ(verdicts.find('0', 2), std::string::npos) << verdicts;
  EXPECT_TRUE(panel.stale);
  EXPECT_TRUE(weather.raining);
  EXPECT_EQ(alerted.given, "rain.wav ");
  EXPECT_TRUE(LastEvent().starts_with("stale: no valid reading since ")) << LastEvent();
  const auto errors = [](const std::string& text) { return text.starts_with("Error while polling the unit"); };
  EXPECT_EQ(std::ranges::count_if(EventTexts(), errors), 1);
  Measure("", 2);
  EXPECT_FALSE(panel.stale);
  EXPECT_EQ(panel.ambient, "5.0");
}

TEST_F(PollCycleTest, TheGustForgetsAfterFiveMinutes) {
  Connect(4);
  Measure("WND=0100", 2);
  Measure("WND=0010", 200);
  EXPECT_EQ(panel.wind_gust, "90.0");
  EXPECT_EQ(panel.wind, "9.0");
  Tick(110);
  EXPECT_EQ(panel.wind_gust, "9.0");
}

}  // namespace
}  // namespace orvalis
