#include "verdict/safety_judge.h"

#include <gtest/gtest.h>

#include <cctype>
#include <string>

#include "reading/frame_interpreter.h"
#include "tests/support/fake_serial_port.h"
#include "verdict/explanation.h"
#include "verdict/told_reasons.h"

namespace orvalis {
namespace {

using std::chrono::milliseconds;
using test::LiveFrame;

/// The judge with a unit that is read every two seconds. Limits: rain 350, windy above 12 mph, cloudy up to 19 degrees.
class SafetyJudgeTest : public testing::Test {
 protected:
  SafetyJudgeTest() {
    settings.WindsAvgCnt = settings.TempsAvgCount = 1;
    settings.RainThreshold = 350;
    settings.RainOnTime = 60;
    settings.WindThreshold = 36;
    settings.WindMultiplier = 9;
    settings.WindSpeedCloseD = 12;
    settings.LightThreshold = 950;
    settings.PartCloudyDegC = 22;
    settings.FullCloudyDegC = 19;
    settings.CloudsThreshold = -5;
    situation.connected = true;
    situation.session = 1;
  }

  void Frame(const std::string& text, ReadingSource source = ReadingSource::kUnit) {
    const SensorFrame frame(text);
    FrameInterpreter::ReadSwitches(frame, weather);
    interpreter.ReadRainLightAndWind(frame, settings, weather);
    interpreter.Interpret(frame, settings, 200, weather);
    judge.Take({.frame = frame, .weather = weather, .source = source}, settings, situation, now);
  }
  void Pass(milliseconds time) { now = {.tick = now.tick + time.count(), .utc = now.utc + time.count()}; }
  /// So many frames, two seconds apart; returns the reasons that then apply.
  std::string Frames(const std::string& text, int count = 1, ReadingSource source = ReadingSource::kUnit) {
    for (int i = 0; i < count; ++i) {
      Pass(milliseconds(2000));
      Frame(text, source);
    }
    return Reasons();
  }
  std::string After(milliseconds time) {
    Pass(time);
    return Reasons();
  }
  const Observation& Judge() { return judge.Judge(settings, situation, now); }
  std::string Reasons() { return ReasonNames(Judge().verdict); }

  Settings settings;
  Situation situation;
  Instant now{.tick = 5'000'000, .utc = 1'800'000'000'000};
  WeatherState weather;
  FrameInterpreter interpreter;
  SafetyJudge judge;
};

// Wind 20 counts × 9 ÷ 10 = 18 mph is windy, LGT 1000 dark, R 120 dry, 25 degrees of difference clear.
TEST_F(SafetyJudgeTest, EveryReasonHasItsCauseAndGoesWithIt) {
  situation.connected = false;
  EXPECT_EQ(Reasons(), "no_connection");
  situation.connected = true;
  EXPECT_EQ(Reasons(), "no_reading");
  EXPECT_EQ(Frames(LiveFrame(), 5), "hold");
  EXPECT_EQ(After(milliseconds(1999)), "hold");
  EXPECT_EQ(After(milliseconds(1)), "") << "ten seconds after the first";

  EXPECT_EQ(Frames(LiveFrame("RB=1")), "unit_alarm");
  EXPECT_EQ(Frames(LiveFrame("R=0351")), "rain") << "counts even where the unit's alarm is off";
  settings.VerdictRain = 0;
  EXPECT_EQ(Reasons(), "hold");
  settings.VerdictWind = settings.VerdictClouds = settings.VerdictLight = 1;
  EXPECT_EQ(Reasons(), "wind");
  settings.WindSpeedCloseD = 20;
  EXPECT_EQ(Frames(LiveFrame("TP=-01000")), "clouds") << "only 15 degrees colder";
  EXPECT_EQ(Frames(LiveFrame("LGT=0200")), "light");
  EXPECT_EQ(Frames(LiveFrame("AR=0")), "relay_off");
  situation.relay_forced = true;
  EXPECT_EQ(Frames(LiveFrame()), "relay_off");
  situation.relay_forced = false;
  situation.settings_pending = true;
  EXPECT_EQ(Reasons(), "settings_pending");
  situation.settings_pending = false;
  situation.settings_lost = true;
  EXPECT_EQ(Reasons(), "settings_lost");
  situation.settings_lost = false;
  EXPECT_EQ(Frames(LiveFrame("TA=+19999"), 5), "unknown_temperature");
  EXPECT_EQ(Frames(LiveFrame(), 7), "");
  settings.ForceUnsafe = 1;
  EXPECT_EQ(Reasons(), "forced");
  settings.ForceUnsafe = 0;
  situation.test_left = milliseconds(30'000);
  EXPECT_EQ(Reasons(), "forced");
  situation.test_left.reset();
  situation.stopping = true;
  EXPECT_EQ(Reasons(), "stopping");
}

TEST_F(SafetyJudgeTest, OnlyReadingsOfNowCount) {
  Frames(LiveFrame("R=0400"), 7);
  EXPECT_EQ(After(milliseconds(9'999)), "rain");
  EXPECT_TRUE(Judge().values.rain_counts);
  EXPECT_EQ(After(milliseconds(1)), "stale");
  EXPECT_FALSE(Judge().values.rain_counts);
  EXPECT_EQ(Judge().words.rain, "");
  EXPECT_EQ(Judge().AgeSeconds(), 10);
  // Damaged frames end no silence.
  std::string damaged = LiveFrame();
  damaged[0] = 'I';
  EXPECT_EQ(Frames(damaged), "stale, damaged_reading");
  EXPECT_EQ(Judge().AgeSeconds(), 12);
  EXPECT_EQ(Frames(LiveFrame()), "hold");
  EXPECT_EQ(Frames(LiveFrame(), 5), "");
  // A machine that slept, and the first thing after it is a frame.
  Pass(std::chrono::hours(8));
  Frame(LiveFrame());
  EXPECT_EQ(Reasons(), "hold");
  EXPECT_EQ(Frames(LiveFrame(), 5), "");
  // The next connection may be to another unit, whose readings are not the damaged ones.
  Frames(damaged, 5);
  EXPECT_EQ(Reasons(), "stale, damaged_reading");
  situation.connected = false;
  EXPECT_EQ(Reasons(), "no_connection, stale");
  situation.connected = true;
  situation.session = 2;
  EXPECT_EQ(Reasons(), "no_reading, stale");
}

TEST_F(SafetyJudgeTest, TheHoldIsMonotonicAndNeedsTwoFrames) {
  settings.SafeHoldSeconds = 0;
  EXPECT_EQ(Frames(LiveFrame()), "hold");
  EXPECT_EQ(After(milliseconds(5000)), "hold") << "a second frame is needed";
  EXPECT_EQ(Frames(LiveFrame()), "");
  settings.SafeHoldSeconds = 3600;
  Frames(LiveFrame("RB=1"));
  now.utc += 86'400'000;  // the clock was set
  Frames(LiveFrame(), 1800);
  EXPECT_EQ(Judge().verdict.hold_left, milliseconds(2000));
  now.utc -= 2 * 86'400'000LL;
  EXPECT_EQ(Frames(LiveFrame()), "");
}

TEST_F(SafetyJudgeTest, DemoIsSafeOnlyWhereAskedFor) {
  situation = {.demo_mode = true};
  EXPECT_EQ(Frames(std::string(kDryDemoLine), 8, ReadingSource::kDemo), "demo");
  settings.DemoCanBeSafe = 1;
  EXPECT_EQ(Frames(std::string(kDryDemoLine), 6, ReadingSource::kDemo), "");
  EXPECT_EQ(Frames(std::string(kWetDemoLine), 1, ReadingSource::kDemo), "unit_alarm, rain");
  situation = {.connected = true, .session = 1};
  EXPECT_EQ(Reasons(), "no_reading");
  EXPECT_EQ(Judge().source, ReadingSource::kNone);
}

// One wrong bit, anywhere, while the unit says rain and every limit is passed: never safe, whatever the hold.
TEST_F(SafetyJudgeTest, NoSingleBitSaysSafe) {
  settings.SafeHoldSeconds = 0;
  settings.VerdictWind = settings.VerdictClouds = settings.VerdictLight = 1;
  const std::vector<std::string> bad{LiveFrame("RB=1"),     LiveFrame("R=0400"),   LiveFrame("TP=+00100"),
                                     LiveFrame("LGT=0100"), LiveFrame("WND=0050"), LiveFrame("AR=0")};
  for (const std::int32_t block : {1, 5}) {
    settings.TempsAvgCount = block;
    for (const std::string& frame : bad) {
      Frames(frame, 6);
      for (std::size_t bit = 0; bit < frame.size() * 8; ++bit) {
        std::string flipped = frame;
        flipped[bit / 8] = static_cast<char>(flipped[bit / 8] ^ (1 << (bit % 8)));
        Pass(milliseconds(2000));
        if (SensorFrame(flipped).IsComplete()) Frame(flipped);
        ASSERT_FALSE(Judge().verdict.safe) << flipped;
        Frames(frame);
        ASSERT_FALSE(Judge().verdict.safe) << "after " << flipped;
      }
    }
  }
}

TEST_F(SafetyJudgeTest, ExplainsWithFigures) {
  const auto at = [](std::int64_t) { return std::string("21:04"); };
  const auto explain = [this] { return Explain(Reason::kUnitAlarm, Judge()).English(); };
  Frames(LiveFrame("RB=1"));
  EXPECT_EQ(explain(), "the unit's relay is on; none of the readings explains it");
  EXPECT_EQ(Banner(Judge(), at).English(), "UNSAFE - unit's relay on since 21:04");
  Frames(LiveFrame("WND=0050 TP=-00300 LGT=0100 RB=1"));
  EXPECT_EQ(explain(), "wind 50 counts, limit 36; clouds: sky -3.0 C, limit -5.0 C") << "its light alarm is off";
  Frames(LiveFrame("R=0412 RB=1"));
  EXPECT_EQ(
      Explain(Judge()),
      "unit's alarm: rain 412 counts, limit 350; the unit stays on for 60 s after rain. rain 412 counts, limit 350");
  EXPECT_EQ(Banner(Judge(), at).English(), "UNSAFE - rain, limit 350 passed at 21:04");
  Frames(LiveFrame("RB=1"), 9);
  EXPECT_EQ(explain(), "rain 120 counts, limit 350; the unit stays on for 60 s after rain, 42 s left");
  // What decided, where it is not the current values.
  std::string damaged = LiveFrame("R=0412");
  damaged[0] = 'I';
  Frames(damaged);
  EXPECT_EQ(Explain(Reason::kRain, Judge()).English(), "rain 412 counts, limit 350");
  settings.VerdictClouds = 1;
  settings.TempsAvgCount = 5;
  Frames(LiveFrame("TA=-01000"));
  EXPECT_EQ(Explain(Reason::kClouds, Judge()).English(), "cloudy: the sky is 10.0 C colder than the air, limit 19 C");
  EXPECT_EQ(Explain(Reason::kClouds, Judge(), {}, {.centigrade = false}).English(),
            "cloudy: the sky is 18.0 F colder than the air, limit 34.2 F");
  Pass(std::chrono::minutes(2));
  EXPECT_EQ(Banner(Judge(), at).English(), "UNSAFE - no reading for 2 min");
  Frames(LiveFrame(), 2);
  EXPECT_EQ(Banner(Judge(), at).English(), "SAFE in 8 s");
}

TEST_F(SafetyJudgeTest, WhatTheHistoryKeptIsToldInTheWindowsLanguage) {
  const Language loud = [](std::string text) {
    for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return text;
  };
  for (const char* frame : {"", "RB=1", "WND=0050 TP=-00300 LGT=0100 RB=1", "TP=-00530 RB=1", "R=0412 RB=1", "RB=1"}) {
    Frames(LiveFrame(frame));
    const Observation now = Judge();
    std::string all;
    now.verdict.reasons.ForEach(
        [&](Reason reason) { all += (all.empty() ? "" : ". ") + Explain(reason, now).In(loud); });
    EXPECT_EQ(ToldReasons(Explain(now)).In(loud), all);
    for (std::size_t i = 0; i < kReasonCount; ++i) {
      const Message reason = Explain(static_cast<Reason>(i), now);
      EXPECT_EQ(ToldReasons(reason.English()).In(loud), reason.In(loud));
    }
  }
  EXPECT_EQ(ToldReasons("rain 1 of 2, limit 3").In(loud), "rain 1 of 2, limit 3") << "of another version";
  std::string damaged;
  for (int i = 0; i < 60; ++i) damaged += "forced by hand. ";
  damaged += "forced by hnd";
  EXPECT_EQ(ToldReasons(damaged).In(loud), damaged) << "and at once";
}

}  // namespace
}  // namespace orvalis
