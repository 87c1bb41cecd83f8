#include "reading/conditions.h"

#include <gtest/gtest.h>

#include <limits>
#include <map>
#include <string>

#include "base/text.h"
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

}  // namespace
}  // namespace orvalis
