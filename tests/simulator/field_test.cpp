#include "field.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace orvalis_unit {
namespace {

TEST(Frame, LinesWrittenByHand) {
  // The readings in the order of the line: HUM LGT R WND TP TTP TA, AH HB AR RB AW AL AC, Trg.
  const std::pair<Readings, const char*> cases[] = {
      {{0, 1023, 100, 10, -9.99, 1, 5, 0, 0, 1, 0, 1, 1, 1, 36.91},
       "HUM=0000 LGT=1023 R=0100 WND=0010 TP=-00999 TTP=+00100 TA=+00500 AH=0 HB=0 AR=1 RB=0 AW=1 AL=1 AC=1 "
       "Trg=+03691 FW=21#"},
      {{700, 1, 500, 100, 10, 10, 15, 1, 2, 1, 1, 1, 1, 1, 36.91},
       "HUM=0700 LGT=0001 R=0500 WND=0100 TP=+01000 TTP=+01000 TA=+01500 AH=1 HB=2 AR=1 RB=1 AW=1 AL=1 AC=1 "
       "Trg=+03691 FW=21#"},
      // No reading, hundredths that are no exact binary fractions, a negative nothing, and values too big for their
      // places, which must not push the rest of the line.
      {{12345, -3, 219.6, 9.4, -0.004, kNoReading, -1234.5, 0, 0, 0, 0, 0, 0, 0, -0.29},
       "HUM=1023 LGT=0000 R=0220 WND=0009 TP=+00000 TTP=+19999 TA=-99999 AH=0 HB=0 AR=0 RB=0 AW=0 AL=0 AC=0 "
       "Trg=-00029 FW=21#"},
  };
  for (const auto& [readings, line] : cases) EXPECT_EQ(FrameText(readings), line);
}

TEST(FieldValue, TakesWhatTheFieldCanHold) {
  EXPECT_EQ(ParseFieldValue(Field::kHumidity, "999"), 999.0);
  EXPECT_EQ(ParseFieldValue(Field::kSky, "-12.34"), -12.34);
  EXPECT_EQ(ParseFieldValue(Field::kAmbient, "+7"), 7.0);
  EXPECT_EQ(ParseFieldValue(Field::kBody, "none"), 199.99);
  EXPECT_EQ(ParseFieldValue(Field::kHeater, "2"), 2.0);

  const std::pair<Field, const char*> wrong[] = {
      {Field::kHumidity, "1024"}, {Field::kRain, "-1"},  {Field::kWind, "3.5"}, {Field::kRelay, "2"},
      {Field::kSky, "none"},      {Field::kSky, "1000"}, {Field::kSky, "nan"},  {Field::kSky, "1e2"},
      {Field::kSky, ""},          {Field::kSky, "+-5"},  {Field::kSky, "5C"}};
  for (const auto& [field, text] : wrong) EXPECT_THROW(ParseFieldValue(field, text), std::invalid_argument) << text;
}

}  // namespace
}  // namespace orvalis_unit
