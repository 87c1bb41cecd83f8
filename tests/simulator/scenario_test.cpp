#include "scenario.h"

#include <gtest/gtest.h>

#include <string>

#include "night_scenario.h"

namespace orvalis_unit {
namespace {

TEST(Scenario, LinesBetweenPointsStepsForFlagsAndAllOverAgain) {
  const auto scenario = Scenario::Parse(
      "# a comment, and a Windows line end\r\n"
      "period 1:00:00\r\n"
      "\n"
      "0:20 TA 20   # out of order\n"
      "0:10 TA 10\n"
      "600 RB 1\n"
      "0:20:30 RB auto\n"
      "0 TTP 5\n"
      "100 TTP none\n"
      "200 TTP 8\n",
      "test");
  const std::tuple<Field, double, std::optional<double>> cases[] = {
      {Field::kAmbient, 0, 10.0},        {Field::kAmbient, 600, 10.0},        {Field::kAmbient, 750, 12.5},
      {Field::kAmbient, 1200, 20.0},     {Field::kAmbient, 3599, 20.0},       {Field::kAmbient, 3600, 10.0},
      {Field::kAmbient, 7200 + 900, 15}, {Field::kRelay, 599, std::nullopt},  {Field::kRelay, 600, 1.0},
      {Field::kRelay, 1229, 1.0},        {Field::kRelay, 1230, std::nullopt}, {Field::kWind, 5, std::nullopt},
      {Field::kBody, 99, 5.0},           {Field::kBody, 150, kNoReading},     {Field::kBody, 200, 8.0},
  };
  for (const auto& [field, seconds, value] : cases) EXPECT_EQ(scenario.At(field, seconds), value) << seconds;
  EXPECT_EQ(Scenario::Parse("0 R 640\n", "test").At(Field::kRain, 1e6), 640.0) << "one point is played forever";
}

TEST(Scenario, ErrorsNameTheFileAndTheLine) {
  const std::pair<const char*, const char*> cases[] = {
      {"0 R 1\n0:60 R 2\n", "test:2: \"0:60\" is not a time"},
      {"0 Q 1\n", "test:1: unknown field \"Q\""},
      {"0 R auto\n", "test:1: R takes a whole number from 0 to 1023"},
      {"\n\n0 R 5 6\n", "test:3: expected: time field value"},
      {"0 R 5\n0:00 R 6\n", "test:2: R was given for the same time in line 1"},
      {"0 TA 5\n2:00 TA 6\nperiod 1:00\n", "test:2: this is after the end of the period, 1:00:00"},
      {"period 0\n", "test:1: period must be longer"},
  };
  for (const auto& [text, message] : cases) {
    try {
      Scenario::Parse(text, "test");
      ADD_FAILURE() << "taken: " << text;
    } catch (const ScenarioError& error) {
      EXPECT_EQ(std::string(error.what()).find(message), 0U) << error.what();
    }
  }
  EXPECT_THROW(Scenario::Load("/nonexistent/night"), ScenarioError);
  EXPECT_THROW(Scenario::Load("/"), ScenarioError);
}

// What a program with its settings untouched calls rain, wind and day: above 370, above 13 counts, up to 200.
TEST(Scenario, TheShippedOnesShowWhatTheirNamesSay) {
  const auto night = Scenario::Parse(NightScenario(), "night.scenario");
  const auto at = [](const Scenario& scenario, double hour) {
    const auto value = [&](Field field) { return scenario.At(field, hour * 3600).value(); };
    return std::string(value(Field::kAmbient) - value(Field::kSky) >= 22 ? "clear" : "") +
           (value(Field::kWind) > 13 ? " wind" : "") + (value(Field::kRain) > 370 ? " rain" : "") +
           (value(Field::kLight) <= 200 ? " day" : "");
  };
  EXPECT_EQ(at(night, 0) + "," + at(night, 5.5) + "," + at(night, 8), "clear day, wind rain,clear");
  for (const auto& [name, words] : {std::pair{"clear", "clear"}, {"rain", " rain"}, {"wind", "clear wind"}}) {
    EXPECT_EQ(at(Scenario::Load(std::string(ORVALIS_UNIT_SCENARIOS "/") + name + ".scenario"), 0), words);
  }
}

}  // namespace
}  // namespace orvalis_unit
