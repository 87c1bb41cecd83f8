#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <string>

#include "base/run_time_error.h"
#include "base/text.h"
#include "reading/conditions.h"
#include "reading/conversions.h"
#include "reading/display_units.h"
#include "reading/wind.h"
#include "tests/support/fake_serial_port.h"

namespace orvalis {
namespace {

/// "Dry green, Rain red"
std::string Texts(std::initializer_list<Word> words) {
  const std::map<int, const char*> colours{{255, "red"}, {65535, "yellow"}, {65280, "green"}};
  std::string texts;
  for (const Word& word : words) {
    texts.append(texts.empty() ? "" : ", ").append(word.text).append(" ");
    texts += colours.at(static_cast<int>(word.colour));
  }
  return texts;
}

TEST(Conditions, WordsAtTheirLimits) {
  EXPECT_EQ(Texts({CloudWord(19, 22, 19), CloudWord(19.1, 22, 19), CloudWord(21.9, 22, 19), CloudWord(22, 22, 19)}),
            "Cloudy red, PCloudy yellow, PCloudy yellow, Clear green");
  // Limits the wrong way round: the last rule wins.
  EXPECT_EQ(Texts({CloudWord(18, 19, 22), CloudWord(20, 19, 22)}), "Cloudy red, Clear green");
  EXPECT_EQ(Texts({WindWord(8.0, 12, 8), WindWord(8.1, 12, 8), WindWord(12.0, 12, 8), WindWord(12.1, 12, 8)}),
            "Calm green, Breeze yellow, Breeze yellow, Windy red");
  EXPECT_EQ(Texts({WindWord(9, 5, 8)}), "Windy red");
  EXPECT_EQ(Texts({RainWord(350, 350), RainWord(351, 350), RainWord(370, 350), RainWord(371, 350)}),
            "Dry green, Damp yellow, Damp yellow, Rain red");
  EXPECT_EQ(Texts({RainWord(0, std::numeric_limits<std::int32_t>::max())}), "Dry green");
  EXPECT_EQ(Texts({LightWord(951, 950), LightWord(950, 950), LightWord(201, 950), LightWord(200, 950)}),
            "Dark green, Dusk yellow, Dusk yellow, Day red");
  EXPECT_EQ(Texts({HeaterWord(1), HeaterWord(2), HeaterWord(7)}), "Y red, ? yellow, N green");
  EXPECT_EQ(Texts({RelayWord(1, 2), RelayWord(0, 2), RelayWord(2, 0)}), "Y red, ? yellow, N green");
}

TEST(Conditions, CloudsFigureCountsTheLastTestThatHolds) {
  std::string figures;
  for (const double sky : {-5.0, -4.9, -2.0, -1.9}) figures += FormatFixed(CloudsFigure(sky, -5, 22, 19), 1) + " ";
  EXPECT_EQ(figures, "0.0 0.5 0.5 1.0 ");
  EXPECT_EQ(CloudsFigure(-6.0, -5, 19, 22), 1.0F);  // limits the wrong way round: above the second limit alone
}

TEST(Conditions, OnlyTheDigitZeroIsSafe) {
  std::string line = test::LiveFrame();
  const std::map<char, int> expected{{'0', 0}, {'1', 1}, {'x', -1}, {' ', -1}, {'-', -1}, {'\0', -1}, {'\xff', -1}};
  for (const auto& [digit, indicator] : expected) {
    line[83] = digit;
    EXPECT_EQ(UnsafeIndicator(SensorFrame(line)), indicator) << digit;
  }
  EXPECT_EQ(UnsafeIndicator(SensorFrame("short")), -1);
  line[83] = '0';
  for (const std::size_t i : {79u, 80u, 81u, 82u}) {  // " RB="
    std::string noise = line;
    noise[i] = '0';
    EXPECT_EQ(UnsafeIndicator(SensorFrame(noise)), -1) << noise;
  }
  EXPECT_EQ(UnsafeIndicator(SensorFrame(kDryDemoLine)), 0);
}

TEST(WindFigures, AverageSpansTheLastCyclesAndTheGustItsBlock) {
  WindFigures wind;
  EXPECT_EQ(wind.gust(), 0.0);
  EXPECT_EQ(wind.average(), 0.0);
  EXPECT_DOUBLE_EQ(WindMph(20, 9), 18);  // 20 counts × 9 ÷ 10
  for (const double mph : {3.0, 6.0, 12.0, 9.0}) wind.Add(mph, 3);
  EXPECT_DOUBLE_EQ(wind.average(), 9);  // 6, 12 and 9
  EXPECT_DOUBLE_EQ(wind.gust(), 12);
  wind.BeginGustBlock();
  wind.Add(1, 3);
  EXPECT_DOUBLE_EQ(wind.gust(), 1);
  EXPECT_DOUBLE_EQ(wind.current(), 1);
  wind.Add(5, -4);  // a count that makes no sense averages nothing
  EXPECT_DOUBLE_EQ(wind.average(), 5);
  for (int i = 0; i < 10'000; ++i) wind.Add(2, std::numeric_limits<std::int32_t>::max());
  EXPECT_DOUBLE_EQ(wind.average(), 2);
}

// Each expected value was read off the line by eye.
TEST(SensorFrame, CutsEveryFieldOfBothDemoLinesAndALiveOne) {
  using F = SensorFrame::Field;
  const SensorFrame dry(kDryDemoLine);
  const SensorFrame wet(kWetDemoLine);
  EXPECT_EQ(dry.text().size(), 111u);
  EXPECT_FALSE(dry.IsComplete());
  const std::tuple<F, const char*, const char*> rows[] = {
      {F::kHum, "0000", "0700"},    {F::kLgt, "1023", "0001"},    {F::kR, "0100", "0500"},
      {F::kWnd, "0010", "0100"},    {F::kTp, "-00999", "+01000"}, {F::kTtp, "+00100", "+01000"},
      {F::kTa, "+00500", "+01500"}, {F::kAh, "0", "1"},           {F::kHb, "0", "1"},
      {F::kAr, "1", "1"},           {F::kRb, "0", "1"},           {F::kAw, "1", "1"},
      {F::kAl, "1", "1"},           {F::kAc, "1", "1"},
  };
  for (const auto& [field, in_dry, in_wet] : rows) {
    EXPECT_EQ(dry.Cut(field), in_dry);
    EXPECT_EQ(wet.Cut(field), in_wet);
  }
  EXPECT_DOUBLE_EQ(dry.Celsius(F::kTp), -9.99);
  EXPECT_TRUE(SensorFrame(test::LiveFrame()).IsComplete());
}

TEST(SensorFrame, CompleteMeansTheTerminatorAtItsPlaceAndNothingElse) {
  const std::string live = test::LiveFrame();
  EXPECT_FALSE(SensorFrame("").IsComplete());
  EXPECT_FALSE(SensorFrame(live.substr(0, 116)).IsComplete());
  EXPECT_FALSE(SensorFrame(live.substr(1)).IsComplete());
  std::string garbage(116, '\0');
  garbage[3] = '\xff';
  EXPECT_TRUE(SensorFrame(garbage + "#").IsComplete());
  EXPECT_EQ(SensorFrame(garbage + "#").Number(SensorFrame::Field::kTa), 0);
  EXPECT_EQ(SensorFrame("HUM=07").Cut(SensorFrame::Field::kHum), "07");
  EXPECT_EQ(SensorFrame("HUM=07").Cut(SensorFrame::Field::kAc), "");
}

class BlockAveragesTest : public testing::Test {
 protected:
  /// Adds a frame to a block of `size`: whether the block is complete.
  bool Add(const std::string& measured, int size) {
    return averages.Add(SensorFrame(test::LiveFrame(measured)), size, state);
  }
  /// The averages of body, ambient and rain; a question mark is before what is not known.
  [[nodiscard]] std::string Known() const {
    const auto text = [](double value, bool known) { return (known ? "" : "?") + FormatFixed(value, 2) + " "; };
    return text(state.body_celsius, state.body_known) + text(state.ambient_celsius, state.ambient_known) +
           FormatFixed(state.rain_average, 2);
  }

  BlockAverages averages;
  WeatherState state;
};

TEST_F(BlockAveragesTest, ChangeOnceABlockAndRepeatTheAverageForMissingReadings) {
  EXPECT_FALSE(Add("TA=+00600", 3));
  EXPECT_FALSE(Add("TA=+00700", 3));
  EXPECT_EQ(averages.samples_taken(), 2);
  EXPECT_EQ(Known(), "?-99.00 ?-99.00 0.00");
  EXPECT_TRUE(Add("TA=+00950", 3));
  EXPECT_EQ(Known(), "6.00 7.50 120.00");  // (6 + 7 + 9.5) / 3
  for (int i = 0; i < 3; ++i) Add("TA=+19999", 3);
  EXPECT_EQ(Known(), "6.00 7.50 120.00");
}

// Before any reading the substitute is the start value; it must not pass for a temperature.
TEST_F(BlockAveragesTest, AMissingFirstReadingLeavesTheTemperatureUnknown) {
  EXPECT_TRUE(Add("TA=+19999", 1));
  EXPECT_EQ(Known(), "6.00 ?-99.00 120.00");
  Add("TA=-00150", 1);
  EXPECT_EQ(Known(), "6.00 -1.50 120.00");
}

// An average that cannot change any more would look fresh for as long as the frames come.
TEST_F(BlockAveragesTest, WithoutAnEndNothingIsKnownAndAChangedBlockBeginsAnew) {
  Add("TA=+00700", 1);
  for (const int size : {0, -1, 301, 9999}) {
    EXPECT_FALSE(Add("TA=-01000", size));
    EXPECT_EQ(Known(), "?6.00 ?7.00 120.00") << size;
    EXPECT_NE(AveragingCountComplaint(size).English().find(" is " + std::to_string(size) + " "), std::string::npos);
  }
  EXPECT_TRUE(AveragingCountComplaint(300).empty() && AveragingCountComplaint(1).empty());
  EXPECT_TRUE(Add("TA=-01000", 300));
  EXPECT_EQ(Known(), "6.00 -10.00 120.00");
  // Fewer samples asked for than were taken: the new block must still find its end.
  for (int i = 0; i < 5; ++i) Add("", 10);
  EXPECT_FALSE(Add("", 2));
  EXPECT_TRUE(Add("", 2));
}

TEST_F(BlockAveragesTest, AfterAGapTheFirstReadingIsTheAverageAndThenComeBlocks) {
  for (const char* ambient : {"TA=+01000", "TA=+02000"}) Add(ambient, 2);
  EXPECT_EQ(Known(), "6.00 15.00 120.00");
  averages = {};
  state.ForgetAverages();
  EXPECT_TRUE(Add("TA=+19999 TTP=+00300", 4));  // the ambient sensor is a frame late
  EXPECT_EQ(Known(), "3.00 ?15.00 120.00");
  EXPECT_FALSE(Add("TA=+19999 TTP=+00300", 4));
  EXPECT_FALSE(Add("TA=-00400 TTP=+00300", 4));
  EXPECT_EQ(Known(), "3.00 -4.00 120.00");
  EXPECT_FALSE(Add("TA=-00600 TTP=+00500", 4));
  EXPECT_TRUE(Add("TA=-00600 TTP=+00500", 4));
  EXPECT_EQ(Known(), "4.00 -5.00 120.00");  // (3 + 3 + 5 + 5) / 4, and (-4 - 4 - 6 - 6) / 4
}

// Expected values from bc with 12 decimals.
TEST(Conversions, MatchValuesWorkedByHand) {
  constexpr double kTolerance = 1e-6;
  EXPECT_NEAR(RelativeHumidity(520, 5, 200), 48.866653110772, kTolerance);
  EXPECT_NEAR(RelativeHumidity(520, 5, 1.9), 44.246652393118, kTolerance);
  EXPECT_NEAR(RelativeHumidity(0, 5, 200), -29.420375847205, kTolerance);
  EXPECT_NEAR(DewPoint(50, 20), 9.255305544815, kTolerance);
  EXPECT_NEAR(DewPoint(99, 10), 9.849774533536, kTolerance);
  EXPECT_EQ(DewPoint(99.0001, 10), 10);
  EXPECT_EQ(DewPoint(-0.1, 10), 10);
  EXPECT_NEAR(ClearSkyTemperature(10, 20), 1.191675591659, kTolerance);
  EXPECT_NEAR(ClearSkyTemperature(-5, -2.5), -27.103029830344, kTolerance);
  EXPECT_DOUBLE_EQ(ToFahrenheit(-40), -40);
  EXPECT_DOUBLE_EQ(ToFahrenheit(100), 212);
  const std::pair<WindUnit, double> of_100_mph[] = {{WindUnit::kMilesPerHour, 100},
                                                    {WindUnit::kKilometresPerHour, 160.9344},
                                                    {WindUnit::kMetresPerSecond, 44.704},
                                                    {WindUnit::kKnots, 86.897624}};
  for (const auto& [unit, value] : of_100_mph) EXPECT_NEAR(FromMph(100, unit), value, 1e-6) << Name(unit);
}

TEST(Conversions, WithoutAResultTheyRaiseInsteadOfReturningNoNumber) {
  EXPECT_THROW(static_cast<void>(DewPoint(0, 10)), RunTimeError);
  EXPECT_THROW(static_cast<void>(DewPoint(50, -243.12)), RunTimeError);
  EXPECT_THROW(static_cast<void>(ClearSkyTemperature(-200, 5)), RunTimeError);
  for (int halves = -120; halves <= 120; ++halves) {
    const double celsius = halves / 2.0;
    for (int count = 0; count <= 1023; count += 11) {
      const double humidity = RelativeHumidity(count, celsius, 200);
      EXPECT_TRUE(std::isfinite(ClearSkyTemperature(DewPoint(humidity, celsius), celsius)));
    }
  }
}

}  // namespace
}  // namespace orvalis
