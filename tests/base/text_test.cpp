#include "base/text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

RunTimeError::Number ErrorOf(const auto& call) {
  try {
    call();
  } catch (const RunTimeError& error) {
    return error.number();
  }
  return {};
}

// A garbled field must read as far as it is a number, and never as another number.
TEST(Val, ReadsAsFarAsTheTextIsANumber) {
  const struct {
    std::string text;
    double value;
  } rows[] = {
      {"-00999", -999},
      {"+00500", 500},
      {"0007", 7},
      {"  12", 12},
      {"12x4", 12},
      {"1.5.3", 1.5},
      {"x12", 0},
      {"", 0},
      {"-", 0},
      {"+-5", 0},
      {".5", 0.5},
      {"1e3", 1},
      {"nan", 0},
      {"inf", 0},
      {std::string("1\0"
                   "2",
                   3),
       1},
      {"\xff\xfe", 0},
      {"1,5", 1},
      {"--5", 0},
      {"5-", 5},
      {"0x1F", 0},
  };
  for (const auto& row : rows) EXPECT_EQ(Val(row.text), row.value) << row.text;
}

// Shown figures are compared with limits by people and by clients: 0.25 is 0.3 and 2.35 is 2.4, as on paper.
TEST(FormatFixed, RoundsAsOnPaper) {
  const struct {
    double value;
    int decimals;
    const char* text;
  } rows[] = {
      {0.25, 1, "0.3"},
      {-0.25, 1, "-0.3"},
      {0.15, 1, "0.2"},
      {2.35, 1, "2.4"},
      {9.96, 1, "10.0"},
      {99.95, 1, "100.0"},
      {0.04, 1, "0.0"},
      {-0.04, 1, "0.0"},
      {0.05, 1, "0.1"},
      {1830.2, 1, "1830.2"},
      {99.6, 0, "100"},
      {0.5, 0, "1"},
      {0.4999, 0, "0"},
      {-9.99, 2, "-9.99"},
      {5, 1, "5.0"},
      {0, 0, "0"},
      {1e15, 1, "1000000000000000.0"},
      {123456.789, 0, "123457"},
      {-273.15, 1, "-273.2"},
      {0.001, 0, "0"},
      {46347.12345678, 5, "46347.12346"},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(FormatFixed(row.value, row.decimals), row.text);
    EXPECT_DOUBLE_EQ(RoundToDecimals(row.value, row.decimals), std::stod(row.text));
  }
  EXPECT_EQ(FormatFixed(-1.25, 1, {.decimal_separator = ','}), "-1,3");
  EXPECT_EQ(FormatFixed(std::numeric_limits<double>::quiet_NaN(), 1), "nan");
  EXPECT_EQ(FormatFixed(-std::numeric_limits<double>::infinity(), 1), "-inf");
  EXPECT_EQ(FormatFixed(std::numeric_limits<double>::max(), 9).size(), 309u + 1 + 9);
}

TEST(SettingTexts, WholeTextConvertsOrNothing) {
  for (const char* yes : {"True", "true", "TRUE", "-1", "1", " 2.5 "}) EXPECT_TRUE(TextToBoolean(yes)) << yes;
  for (const char* no : {"False", "fALSE", "0", "0.0", "-0"}) EXPECT_FALSE(TextToBoolean(no)) << no;
  for (const char* bad : {"", "yes", "Truex", "1 2"}) {
    EXPECT_EQ(ErrorOf([&] { return TextToBoolean(bad); }), RunTimeError::kTypeMismatch) << bad;
  }

  const struct {
    const char* text;
    std::int32_t value;
  } integers[] = {{"350", 350}, {"-7", -7},   {"+7", 7},
                  {"2.5", 2},   {"3.5", 4},   {"-2.5", -2},
                  {" 5 ", 5},   {"1e2", 100}, {"2147483647.4", 2147483647}};
  for (const auto& row : integers) EXPECT_EQ(TextToInteger(row.text), row.value) << row.text;
  for (const char* bad : {"abc", "", " ", "12a", "1.2.3", "inf", "nan", "0x10", "+-1", "1,5"}) {
    EXPECT_EQ(ErrorOf([&] { return TextToInteger(bad); }), RunTimeError::kTypeMismatch) << bad;
  }
  for (const char* large : {"2147483648", "-2147483649", "1e10", "1e999"}) {
    EXPECT_EQ(ErrorOf([&] { return TextToInteger(large); }), RunTimeError::kOverflow) << large;
  }
}

// A number must never be read a hundred times too large because the point was taken for something else.
TEST(SettingTexts, RealsFollowTheLocale) {
  const NumberLocale comma{.decimal_separator = ','};
  EXPECT_DOUBLE_EQ(TextToReal("0.278"), 0.278);
  EXPECT_DOUBLE_EQ(TextToReal("0,278", comma), 0.278);
  EXPECT_DOUBLE_EQ(TextToReal("-7.13329E-07"), -7.13329e-07);
  EXPECT_EQ(ErrorOf([&] { return TextToReal("12.0", comma); }), RunTimeError::kTypeMismatch);
  EXPECT_EQ(ErrorOf([&] { return TextToReal("12,0"); }), RunTimeError::kTypeMismatch);
  const struct {
    double value;
    const char* text;
  } rows[] = {{12.0, "12"}, {0.1, "0.1"}, {-0.000000713329, "-0.000000713329"}, {1e21, "1000000000000000000000"}};
  for (const auto& row : rows) EXPECT_EQ(RealToText(row.value), row.text);
  EXPECT_EQ(RealToText(-1.5, comma), "-1,5");
}

// What the language of the first clients prints for these numbers.
TEST(GeneralText, ShowsTheDigitsThatAPersonSees) {
  const struct {
    double value;
    const char* as_double;
    const char* as_single;
  } rows[] = {{0, "0", "0"},
              {-0.0, "0", "0"},
              {0.45, "0.45", "0.45"},
              {-9.99, "-9.99", "-9.99"},
              {100, "100", "100"},
              {1.0 / 3, "0.333333333333333", "0.3333333"},
              {1.0 / 30, "3.33333333333333E-02", "3.333334E-02"},
              {0.0001, "0.0001", "0.0001"},
              {-7.13329e-07, "-0.000000713329", "-7.13329E-07"},
              {8.689762, "8.689762", "8.689762"},
              {12345678, "12345678", "1.234568E+07"},
              {9999999.6, "9999999.6", "1E+07"},
              {123456789012345.0, "123456789012345", "1.234568E+14"},
              {1e15, "1E+15", "1E+15"},
              {1e-120, "1E-120", "0"}};
  for (const auto& row : rows) {
    EXPECT_EQ(GeneralText(row.value), row.as_double);
    EXPECT_EQ(GeneralText(static_cast<float>(row.value)), row.as_single);
  }
  EXPECT_EQ(GeneralText(-0.5, NumberLocale{.decimal_separator = ','}), "-0,5");
}

TEST(RoundToInteger, HalvesGoToTheEvenNeighbour) {
  EXPECT_EQ(RoundToInteger(0.5), 0);
  EXPECT_EQ(RoundToInteger(1.5), 2);
  EXPECT_EQ(RoundToInteger(-2.5), -2);
  EXPECT_EQ(ErrorOf([] { return RoundToInteger(std::nan("")); }), RunTimeError::kOverflow);
}

TEST(Texts, AlignmentAndFileNames) {
  EXPECT_EQ(RightAlign("5.0", 6), "   5.0");
  EXPECT_EQ(RightAlign("1234567", 6), "1234567");
  EXPECT_EQ(FileName("C:\\Sounds\\rain.wav"), "rain.wav");
  EXPECT_EQ(FileName("/home/a b/rain.wav"), "rain.wav");
  EXPECT_EQ(FileName("rain.wav"), "rain.wav");
}

}  // namespace
}  // namespace orvalis
