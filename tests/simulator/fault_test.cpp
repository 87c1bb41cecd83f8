#include "fault.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

#include "field.h"

namespace orvalis_unit {
namespace {

using std::chrono::seconds;

bool Befell(const std::optional<FaultRule>& fault, FaultKind kind) { return fault && fault->kind == kind; }

TEST(Fault, RuleText) {
  const auto drop = ParseFaultRule("drop:0.25");
  EXPECT_EQ(drop.kind, FaultKind::kDrop);
  EXPECT_EQ(drop.probability, 0.25);
  EXPECT_EQ(drop.seconds, 5.0);
  EXPECT_EQ(ParseFaultRule("silent").probability, 1.0);
  EXPECT_EQ(ParseFaultRule("silent:1:30").seconds, 30.0);
  for (const char* wrong : {"", "noise", "silent:", "silent:1.5", "silent:x", "silent:1:-2", "silent:1:2:3"}) {
    EXPECT_THROW(ParseFaultRule(wrong), std::invalid_argument) << wrong;
  }
}

TEST(Fault, LastsItsTimeOnceItStruck) {
  FaultBox faults({{FaultKind::kSilent, 0.2, 10.0}}, 1);
  Time now{};
  while (!faults.Next(AnswerKind::kFrame, now)) now += seconds(1);
  EXPECT_GT(now, seconds(0)) << "one in five does not strike at once with this seed";
  for (int i = 0; i < 50; ++i) EXPECT_TRUE(faults.Next(AnswerKind::kFrame, now + seconds(9)));
  int struck = 0;
  for (int i = 1; i <= 1000; ++i) struck += faults.Next(AnswerKind::kFrame, now + seconds(20 * i)) ? 1 : 0;
  EXPECT_NEAR(struck, 200, 60);
}

TEST(Fault, StruckByHandOnceOrForATime) {
  FaultBox faults({}, 1);
  faults.Strike(FaultKind::kShort, std::nullopt, seconds(0));
  EXPECT_FALSE(faults.Next(AnswerKind::kHandshake, seconds(1))) << "there is nothing to shorten";
  EXPECT_TRUE(Befell(faults.Next(AnswerKind::kFrame, seconds(2)), FaultKind::kShort));
  EXPECT_FALSE(faults.Next(AnswerKind::kFrame, seconds(3)));

  faults.Strike(FaultKind::kSilent, 10.0, seconds(10));
  EXPECT_TRUE(Befell(faults.Next(AnswerKind::kHandshake, seconds(19)), FaultKind::kSilent));
  EXPECT_FALSE(faults.Next(AnswerKind::kHandshake, seconds(20)));

  faults.Strike(FaultKind::kSilent, 10.0, seconds(30));
  faults.Clear();
  EXPECT_FALSE(faults.Next(AnswerKind::kFrame, seconds(31)));
}

TEST(Fault, EachSpoilsInItsOwnWay) {
  FaultBox faults({}, 7);
  const std::string frame = FrameText({});
  bool had_zero = false;
  bool had_high = false;
  for (int i = 0; i < 2000; ++i) {
    const auto spoil = [&](FaultKind kind) { return faults.Apply(kind, {AnswerKind::kFrame, frame}); };
    const std::string cut = spoil(FaultKind::kCut).text;
    ASSERT_TRUE(!cut.empty() && cut.size() < kFrameLength && cut.find('#') == std::string::npos);
    const std::string shorter = spoil(FaultKind::kShort).text;
    ASSERT_TRUE(shorter.size() < kFrameLength && shorter.find('#') == shorter.size() - 1);
    const std::string garbage = spoil(FaultKind::kGarbage).text;
    ASSERT_TRUE(garbage.size() == kFrameLength && garbage.find('#') == kFrameLength - 1);
    had_zero = had_zero || garbage.find('\0') != std::string::npos;
    had_high = had_high || std::ranges::any_of(garbage, [](char c) { return static_cast<unsigned char>(c) > 127; });
    const std::string wrong = faults.Apply(FaultKind::kWrongAnswer, {AnswerKind::kHandshake, "W"}).text;
    ASSERT_TRUE(wrong.size() == 1 && wrong != "W" && wrong[0] > ' ' && wrong[0] <= '~');
  }
  EXPECT_TRUE(had_zero);
  EXPECT_TRUE(had_high);
}

}  // namespace
}  // namespace orvalis_unit
