#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "command_parser.h"
#include "fault.h"
#include "field.h"
#include "transmitter.h"

namespace orvalis_unit {
namespace {

using std::chrono::microseconds;
using std::chrono::milliseconds;
using std::chrono::seconds;

// What the bytes are understood as, in short: W handshake, F frame, p, "SR=350", and x for what was dropped.
std::string Understood(std::string_view bytes) {
  CommandParser parser;
  std::string all;
  for (const char byte : bytes) {
    const auto request = parser.Feed(byte);
    if (!request) continue;
    const std::map<RequestKind, std::string> texts{{RequestKind::kHandshake, "W"},
                                                   {RequestKind::kFrame, "F"},
                                                   {RequestKind::kPace, "p"},
                                                   {RequestKind::kDropped, "x"}};
    all += all.empty() ? "" : " ";
    if (request->kind == RequestKind::kCommand) {
      all.append(SettingTable()[Index(request->setting)].code).append("=").append(std::to_string(request->value));
    } else {
      all += texts.at(request->kind);
    }
  }
  return all;
}

TEST(CommandParser, UnderstandsWhatIsSentAndFindsBackAfterWhatIsNot) {
  using namespace std::string_view_literals;
  const std::pair<std::string_view, const char*> cases[] = {
      {"#\x06pp:F:F", "W p p F F"},
      {":AH1:SH0:AR0:Sr1:Ar0:AX1:AL1:AW0", "AH=1 SH=0 AR=0 Sr=1 Ar=0 AX=1 AL=1 AW=0"},
      {":Sh020:ST060:SW036:SR350:SL950:Sd122", "Sh=20 ST=60 SW=36 SR=350 SL=950 Sd=122"},
      {":SX-005:SX+010:SC19:SM9", "SX=-5 SX=10 SC=19 SM=9"},
      // Cut short by the next request, which is served.
      {":SR35:F", "x F"},
      {":S#\x06", "x W"},
      {"##\x06", "x W"},
      {":SX-:SX-007", "x SX=-7"},
      // Malformed: dropped at the first wrong byte, and the rest of it is not taken for anything.
      {":SR3a0:SR400", "x SR=400"},
      {":AH2:SX005:F", "x x F"},
      {":Zz1:sr350:f:F", "x x x F"},
      {"#W\x06:F", "x F"},
      {":SR3500", "SR=350"},
      // Noise between requests.
      {"\0\xFF\x06SR350 F:F"sv, "F"},
      {":\0F:S\xFFR:F"sv, "x x F"},
  };
  for (const auto& [bytes, understood] : cases) EXPECT_EQ(Understood(bytes), understood) << bytes;
}

// Its shape, whatever it counts.
std::string WithZeros(std::string text) {
  std::ranges::replace_if(
      text, [](char c) { return c >= '0' && c <= '9'; }, '0');
  return text;
}

TEST(Fault, EachSpoilsInItsOwnWay) {
  FaultBox faults({}, 7);
  const std::string frame = FrameText({});
  bool had_high = false;
  for (int i = 0; i < 2000; ++i) {
    const auto spoil = [&](FaultKind kind) { return faults.Apply(kind, {AnswerKind::kFrame, frame}); };
    const std::string cut = spoil(FaultKind::kCut).text;
    ASSERT_TRUE(!cut.empty() && cut.size() < kFrameLength && cut.find('#') == std::string::npos);
    const std::string shorter = spoil(FaultKind::kShort).text;
    ASSERT_TRUE(shorter.size() < kFrameLength && shorter.find('#') == shorter.size() - 1);
    const std::string garbage = spoil(FaultKind::kGarbage).text;
    ASSERT_TRUE(garbage.size() == kFrameLength && garbage.find('#') == kFrameLength - 1);
    had_high = had_high || std::ranges::any_of(garbage, [](char c) { return static_cast<unsigned char>(c) > 127; });
    const std::string names = spoil(FaultKind::kNames).text;
    const auto [was, is] = std::ranges::mismatch(frame, names);
    ASSERT_TRUE(std::isalpha(*was) && std::equal(was + 1, frame.end(), is + 1, names.end())) << names;
    ASSERT_EQ(WithZeros(spoil(FaultKind::kDigits).text), WithZeros(frame));
    const Answer noisy = spoil(FaultKind::kNoise);
    ASSERT_TRUE(noisy.text == frame && !noisy.noise.empty() && noisy.noise.size() <= 20);
    const std::string wrong = faults.Apply(FaultKind::kWrongAnswer, {AnswerKind::kHandshake, "W"}).text;
    ASSERT_TRUE(wrong.size() == 1 && wrong != "W" && wrong[0] > ' ' && wrong[0] <= '~');
  }
  EXPECT_TRUE(had_high);
  const Answer whole{AnswerKind::kFrame, frame};
  EXPECT_EQ(faults.Apply(FaultKind::kCut, whole, ParseFaultRule("cut=57").amount).text, frame.substr(0, 57));
  EXPECT_EQ(faults.Apply(FaultKind::kShort, whole, 57).text, frame.substr(0, 56) + "#");
  const std::string one = faults.Apply(FaultKind::kGarbage, whole, 57).text;
  EXPECT_TRUE(one[56] != frame[56] && one.substr(0, 56) + one.substr(57) == frame.substr(0, 56) + frame.substr(57));
  EXPECT_EQ(faults.Apply(FaultKind::kLate, whole, 12).delay, milliseconds(12000));
  for (const char* wrong : {"cut=0", "cut=117", "late=x", "late=1.5", "silent=3", "short="}) {
    EXPECT_THROW(ParseFaultRule(wrong), std::invalid_argument) << wrong;
  }
}

TEST(Frame, LinesWrittenByHand) {
  // The readings in the order of the line: HUM LGT R WND TP TTP TA, AH HB AR RB AW AL AC, Trg.
  const std::pair<Readings, const char*> cases[] = {
      {{0, 1023, 100, 10, -9.99, 1, 5, 0, 0, 1, 0, 1, 1, 1, 36.91},
       "HUM=0000 LGT=1023 R=0100 WND=0010 TP=-00999 TTP=+00100 TA=+00500 AH=0 HB=0 AR=1 RB=0 AW=1 AL=1 AC=1 "
       "Trg=+03691 FW=21#"},
      // No reading, hundredths that are no exact binary fractions, a negative nothing, and values too big for their
      // places, which must not push the rest of the line.
      {{12345, -3, 219.6, 9.4, -0.004, kNoReading, -1234.5, 0, 0, 0, 0, 0, 0, 0, -0.29},
       "HUM=1023 LGT=0000 R=0220 WND=0009 TP=+00000 TTP=+19999 TA=-99999 AH=0 HB=0 AR=0 RB=0 AW=0 AL=0 AC=0 "
       "Trg=-00029 FW=21#"},
  };
  for (const auto& [readings, line] : cases) EXPECT_EQ(FrameText(readings), line);
}

// Ten bits at 9600 bit/s are 1041.67 microseconds; 117 bytes are 121.875 milliseconds.
TEST(Transmitter, NoByteIsEarlyAndErrorsDoNotAddUp) {
  Transmitter line(9600);
  const Time start = milliseconds(5000);
  line.Queue(std::string(117, 'x'), start);
  EXPECT_EQ(line.TakeDue(start + microseconds(1041)), "");
  EXPECT_EQ(line.TakeDue(start + microseconds(1042)), "x");
  EXPECT_EQ(line.TakeDue(start + microseconds(10416)).size(), 8U) << "nine in all: the tenth is not through";
  EXPECT_EQ(line.TakeDue(start + microseconds(121874)).size(), 107U);
  EXPECT_EQ(line.NextDue(), start + microseconds(121875));
  EXPECT_EQ(line.TakeDue(start + microseconds(121875)), "x");
  EXPECT_EQ(line.NextDue(), std::nullopt);
}

TEST(Transmitter, AnswersFollowEachOther) {
  Transmitter line(9600);
  line.Queue("abc", milliseconds(10));
  line.Queue("d", milliseconds(11));  // while "abc" is on the line, up to 13.125 ms
  EXPECT_EQ(line.TakeDue(microseconds(14166)), "abc");
  EXPECT_EQ(line.TakeDue(microseconds(14167)), "d");
  line.Queue("e", milliseconds(100));  // after a rest
  EXPECT_EQ(line.TakeDue(microseconds(101041)), "");
  EXPECT_EQ(line.TakeDue(microseconds(101042)), "e");
}

}  // namespace
}  // namespace orvalis_unit
