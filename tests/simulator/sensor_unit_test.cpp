#include "sensor_unit.h"

#include <gtest/gtest.h>

#include "console.h"

namespace orvalis_unit {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

class SensorUnitTest : public testing::Test {
 protected:
  SensorUnitTest() { Restart({}); }

  void Restart(SensorUnit::Configuration configuration) {
    configuration.is_fast = true;
    unit_.emplace(Scenario::Parse("period 2:00:00\n0 R 220\n1:00:00 R 820\n", "test"), configuration, recorder_);
  }
  std::string Ask(std::string_view bytes, Time now) {
    unit_->Receive(bytes, now);
    return unit_->Line().TakeDue(now);
  }
  // A field's characters in the frame at `now`, by their positions.
  std::string Cut(std::size_t position, std::size_t width, Time now) {
    return Ask(":F", now).substr(position - 1, width);
  }
  std::string Type(std::string_view line, Time now) { return RunConsoleLine(line, *unit_, now).text; }

  Recorder recorder_;
  std::optional<SensorUnit> unit_;
};

TEST_F(SensorUnitTest, KeepsWhatItIsSentAndReportsIt) {
  EXPECT_EQ(Ask("#\x06", seconds(0)), "W");
  EXPECT_EQ(Ask("pp:AH0:AR0:AW0:AL1:AX0", seconds(1)), "");
  EXPECT_EQ(Cut(66, 35, seconds(2)), "AH=0 HB=0 AR=0 RB=0 AW=0 AL=1 AC=0 ");
  Ask(":Sr1:SH1", seconds(3));
  unit_->LineLost();
  EXPECT_EQ(Cut(66, 20, seconds(4)), "AH=0 HB=1 AR=0 RB=1 ") << "a pulled cable is no power cut";
}

TEST_F(SensorUnitTest, HeaterAndRelayFollowTheWeather) {
  // What is measured on top of a quiet, clear night, what was sent, and the frame's field.
  const std::tuple<const char*, const char*, const char*> rows[] = {
      {"R 350", "", "HB=0 AR=1 RB=0"},       {"R 351", "", "HB=1 AR=1 RB=1"},    {"WND 36", "", "HB=0 AR=1 RB=0"},
      {"WND 37", "", "HB=0 AR=1 RB=1"},      {"LGT 950", "", "HB=0 AR=1 RB=0"},  {"LGT 950", ":AL1", "HB=0 AR=1 RB=1"},
      {"TP -5", "", "HB=0 AR=1 RB=0"},       {"TP -4.99", "", "HB=0 AR=1 RB=1"}, {"R 900", ":AR0", "HB=1 AR=0 RB=0"},
      {"R 0", ":AR0:Sr1", "HB=0 AR=0 RB=1"}, {"HUM 757", "", "HB=1 AR=1 RB=0"},  {"R 0", ":AH0:SH1", "HB=1 AR=1 RB=0"},
  };
  for (const auto& [measured, sent, fields] : rows) {
    Restart({});
    Type("set " + std::string(measured), seconds(1));
    Ask(sent, seconds(1));
    EXPECT_EQ(Cut(71, 14, seconds(1)), fields) << measured << sent;
  }
}

TEST_F(SensorUnitTest, TheRelayHoldsForAWhileAfterRainAndAtTheEdgeOfClouds) {
  // When, what is measured then, and the frame's RB. Rain holds it for 60 seconds, clouds until 2 degrees below.
  const std::tuple<int, const char*, const char*> course[] = {
      {100, "R 500", "1"}, {101, "R 200", "1"},   {159, "R 200", "1"}, {160, "R 200", "0"}, {161, "TP -6", "0"},
      {162, "TP -4", "1"}, {163, "TP -6.9", "1"}, {164, "TP -7", "0"}, {165, "TP -6", "0"}};
  for (const auto& [when, measured, relay] : course) {
    Type("set " + std::string(measured), seconds(when));
    EXPECT_EQ(Cut(84, 1, seconds(when)), relay) << when;
  }
}

TEST_F(SensorUnitTest, TheLineKeepsAnswersAndAPowerCutTakesTheSettings) {
  const auto out = [&](Time now) { return unit_->TakeDue(now).size(); };
  Restart({.delay = 5.0});
  unit_->Receive("#\x06", seconds(1));
  EXPECT_EQ(out(milliseconds(1000)) + out(milliseconds(5999)), 0U);
  EXPECT_EQ(unit_->NextDue(), seconds(6));
  Type("delay 0", seconds(3));
  unit_->Receive(":F", seconds(3));
  EXPECT_EQ(out(milliseconds(5999)), 0U) << "it does not overtake";
  EXPECT_EQ(out(seconds(6)), 118U);
  Type("stall 60", seconds(10));
  unit_->Receive(":F:AL1:SR111", seconds(11));
  unit_->Receive(":F", seconds(69));
  EXPECT_EQ(out(milliseconds(69'999)), 0U);
  EXPECT_EQ(out(seconds(70)), 234U);
  Type("bursts 20", seconds(71));
  unit_->Receive(":F", seconds(75));
  EXPECT_EQ(out(milliseconds(79'999)), 0U);
  EXPECT_EQ(out(seconds(80)), 117U);
  Type("bursts 0", seconds(81));
  EXPECT_EQ(Cut(91, 4, seconds(81)), "AL=1");
  Type("power 4", seconds(82));
  EXPECT_EQ(Ask("#\x06:F", milliseconds(85'999)), "");
  EXPECT_EQ(Cut(91, 4, seconds(86)), "AL=0");
  EXPECT_TRUE(Type("stall", seconds(87)).starts_with("error ") && Type("power x", seconds(87)).starts_with("error "));
}

TEST_F(SensorUnitTest, PlaysTheScenarioAtItsSpeed) {
  EXPECT_EQ(Cut(21, 4, seconds(600)), "0320");
  Restart({.speed = 60.0});
  EXPECT_EQ(Cut(21, 4, seconds(10)), "0320");
  EXPECT_EQ(Cut(84, 1, seconds(14)), "1") << "above 350 after 13 seconds, which are 13 minutes of weather";
  EXPECT_EQ(Type("time 0:05:00", seconds(20)), "ok time 0:05:00");
  EXPECT_EQ(Cut(21, 4, seconds(20)), "0270");
  EXPECT_EQ(Cut(84, 1, seconds(20)), "0") << "the rain before the jump is forgotten";
  EXPECT_EQ(Cut(21, 4, seconds(25)), "0320");
}

TEST_F(SensorUnitTest, WhatIsPinnedOverrules) {
  EXPECT_EQ(Type("set R 500", seconds(1)), "ok set R 500");
  EXPECT_EQ(Cut(84, 1, seconds(1)), "1");
  EXPECT_EQ(Type("set RB 0", seconds(2)), "ok set RB 0");
  EXPECT_EQ(Cut(84, 1, seconds(2)), "0");
  Type("release RB", seconds(3));
  Type("set AR 0", seconds(3));
  EXPECT_EQ(Cut(79, 6, seconds(3)), "0 RB=0");
  Type("release AR", seconds(4));
  EXPECT_EQ(Cut(79, 6, seconds(4)), "1 RB=1");
  for (const char* wrong : {"set R", "set R 5000", "set WND 3.5", "set TP nan", "set TP 1e2", "set X 1", "release",
                            "fault", "fault hum", "fault silent x", "drop", "drop -1", "time 0:99", "jump"}) {
    EXPECT_TRUE(Type(wrong, seconds(5)).starts_with("error ")) << wrong;
  }
}

TEST_F(SensorUnitTest, FaultsOnTheWayOut) {
  Restart({.faults = {{FaultKind::kDrop, 1.0, 3.0}}});
  Type("fault silent", seconds(1));
  EXPECT_EQ(Ask(":F", seconds(1)), "");
  EXPECT_EQ(unit_->TakeDrop(), std::nullopt);
  EXPECT_EQ(Ask(":F:SR100", seconds(2)), "");
  EXPECT_EQ(unit_->TakeDrop(), 3.0);
  EXPECT_EQ(RunConsoleLine("drop 2.5", *unit_, seconds(2)).drop, 2.5);
  unit_->LineLost();
  Type("fault none", seconds(3));
  Type("fault late", seconds(3));
  EXPECT_EQ(Ask("#\x06", seconds(3)), "");
  EXPECT_EQ(unit_->Line().TakeDue(milliseconds(7999)), "");
  EXPECT_EQ(unit_->Line().TakeDue(seconds(8)), "W");
}

}  // namespace
}  // namespace orvalis_unit
