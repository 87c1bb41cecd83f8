#include "acquisition/conditions.h"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "acquisition/wind.h"
#include "tests/support/fake_serial_port.h"

namespace orvalis {
namespace {

void ExpectWord(const Word& word, const char* text, int colour) {
  EXPECT_EQ(word.text, text);
  EXPECT_EQ(static_cast<int>(word.colour), colour);
}

constexpr int kRed = 255;
constexpr int kYellow = 65535;
constexpr int kGreen = 65280;

TEST(Conditions, WordsAtTheirLimits) {
  ExpectWord(CloudWord(19, 22, 19), "Cloudy", kRed);
  ExpectWord(CloudWord(19.1, 22, 19), "PCloudy", kYellow);
  ExpectWord(CloudWord(21.9, 22, 19), "PCloudy", kYellow);
  ExpectWord(CloudWord(22, 22, 19), "Clear", kGreen);
  ExpectWord(CloudWord(20, 19, 22), "Clear", kGreen);  // limits the wrong way round: the last rule wins
  ExpectWord(CloudWord(18, 19, 22), "Cloudy", kRed);

  ExpectWord(WindWord(12.0, 12.0, 8.0), "Breeze", kYellow);
  ExpectWord(WindWord(12.1, 12.0, 8.0), "Windy", kRed);
  ExpectWord(WindWord(8.0, 12.0, 8.0), "Calm", kGreen);
  ExpectWord(WindWord(8.1, 12.0, 8.0), "Breeze", kYellow);
  ExpectWord(WindWord(9, 5, 8), "Windy", kRed);

  ExpectWord(RainWord(350, 350), "Dry", kGreen);
  ExpectWord(RainWord(351, 350), "Damp", kYellow);
  ExpectWord(RainWord(370, 350), "Damp", kYellow);
  ExpectWord(RainWord(371, 350), "Rain", kRed);
  ExpectWord(RainWord(0, std::numeric_limits<std::int32_t>::max()), "Dry", kGreen);

  ExpectWord(LightWord(951, 950), "Dark", kGreen);
  ExpectWord(LightWord(950, 950), "Dusk", kYellow);
  ExpectWord(LightWord(201, 950), "Dusk", kYellow);
  ExpectWord(LightWord(200, 950), "Day", kRed);

  ExpectWord(HeaterWord(1), "Y", kRed);
  ExpectWord(HeaterWord(2), "?", kYellow);
  ExpectWord(HeaterWord(7), "N", kGreen);
  ExpectWord(RelayWord(1, 2), "Y", kRed);
  ExpectWord(RelayWord(0, 2), "?", kYellow);
  ExpectWord(RelayWord(2, 0), "N", kGreen);
}

TEST(Conditions, CloudsFigureCountsTheLastTestThatHolds) {
  EXPECT_EQ(CloudsFigure(-5.0, -5, 22, 19), 0.0F);
  EXPECT_EQ(CloudsFigure(-4.9, -5, 22, 19), 0.5F);
  EXPECT_EQ(CloudsFigure(-2.0, -5, 22, 19), 0.5F);
  EXPECT_EQ(CloudsFigure(-1.9, -5, 22, 19), 1.0F);
  EXPECT_EQ(CloudsFigure(-6.0, -5, 19, 22), 1.0F);  // limits the wrong way round: above the second limit alone
}

TEST(Conditions, OnlyTheDigitZeroIsSafe) {
  std::string line = test::LiveFrame();
  EXPECT_EQ(UnsafeIndicator(SensorFrame(line)), 0);
  line[83] = '1';
  EXPECT_EQ(UnsafeIndicator(SensorFrame(line)), 1);
  for (const char garbage : {'x', ' ', '-', '\0', '\xff'}) {
    line[83] = garbage;
    EXPECT_EQ(UnsafeIndicator(SensorFrame(line)), -1);
  }
  EXPECT_EQ(UnsafeIndicator(SensorFrame("short")), -1);
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

}  // namespace
}  // namespace orvalis
