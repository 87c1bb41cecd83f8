#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <string>
#include <tuple>

#include "base/clock.h"
#include "base/message.h"
#include "base/run_time_error.h"
#include "base/task.h"
#include "base/text.h"
#include "tests/support/error_of.h"
#include "tests/support/fake_event_loop.h"
#include "unit/serial_port_entry.h"

namespace orvalis {
namespace {

using std::chrono::milliseconds;
using test::ErrorOf;

Task<std::string> Fetch(test::FakeEventLoop& loop, bool fail) {
  co_await Pause(loop, milliseconds(20));
  if (fail) throw RunTimeError(RunTimeError::kPortClosed, "closed");
  co_return "frame";
}

Task<> Work(test::FakeEventLoop& loop, std::string& result) {
  result = co_await Fetch(loop, false);
  try {
    result += co_await Fetch(loop, true);
  } catch (const RunTimeError& error) {
    result += error.what();
  }
  co_await Pause(loop, milliseconds(0));
  result += co_await Fetch(loop, true);
}

TEST(Task, ValuesAndErrorsReachTheAwaiter) {
  test::FakeEventLoop loop;
  std::string result;
  std::exception_ptr ended_with;
  Job job;
  job.Start(Work(loop, result), [&](std::exception_ptr error) { ended_with = std::move(error); });
  loop.Advance(milliseconds(19));
  EXPECT_EQ(result, "");
  loop.Advance(milliseconds(1));
  EXPECT_EQ(result, "frame");
  loop.Advance(milliseconds(20));
  EXPECT_EQ(result, "frameclosed");
  EXPECT_TRUE(job.running());
  loop.Advance(milliseconds(20));
  EXPECT_FALSE(job.running());
  EXPECT_THROW(std::rethrow_exception(ended_with), RunTimeError);
}

// The program ends while a task waits: nothing may call into it afterwards.
TEST(Task, DestroyingTheJobTakesItsTimersBack) {
  test::FakeEventLoop loop;
  std::string result;
  {
    Job job;
    job.Start(Work(loop, result), [](const std::exception_ptr&) { FAIL() << "abandoned, not ended"; });
    EXPECT_EQ(loop.waiting(), 1u);
  }
  EXPECT_EQ(loop.waiting(), 0u);
}

TEST(Clock, WritesDatesAsEachReaderExpects) {
  const CivilTime midnight{2026, 1, 2, 0, 5, 9, 7, -150};
  EXPECT_EQ(FormatEventTime(midnight), "01/02/2026 12:05 AM");
  EXPECT_EQ(FormatIso8601(midnight), "2026-01-02T00:05:09.007-02:30");
  CivilTime noon = midnight;
  noon.hour = 12;
  EXPECT_EQ(FormatEventTime(noon), "01/02/2026 12:05 PM");
  EXPECT_EQ(FormatTime(noon, "YYYY-MM-DD+hh:nn.ss.00"), "2026-01-02+12:05.09.00");
}

TEST(SerialPortEntries, TheConnectedOneIsSaidToBeUnderEachOfItsNames) {
  const auto listed = [](const std::string& chosen, const std::string& device) {
    const auto same = [&](const std::string& name) {
      return name == device || (name == "2" && device == "/dev/ttyS1");
    };
    std::string all;
    for (const auto& port :
         WithConnected({{"/dev/ttyS1", {}}, {"/dev/ttyUSB0", std::string("FTDI")}}, chosen, device, same)) {
      all += port.name + " " + port.description.English() + "; ";
    }
    return all;
  };
  EXPECT_EQ(listed("/dev/ttyUSB0", "/dev/ttyUSB0"), "/dev/ttyS1 ; /dev/ttyUSB0 FTDI, connected; ");
  EXPECT_EQ(listed("2", "/dev/ttyS1"), "/dev/ttyS1 Connected; /dev/ttyUSB0 FTDI; 2 Connected; ");
  EXPECT_EQ(listed("2", "/dev/pts/7"), "/dev/ttyS1 ; /dev/ttyUSB0 FTDI; /dev/pts/7 Connected; ");  // by --port
}

// A garbled field must read as far as it is a number, and never as another number.
TEST(Val, ReadsAsFarAsTheTextIsANumber) {
  const std::pair<std::string, double> rows[] = {
      {"-00999", -999}, {"+00500", 500}, {"0007", 7}, {"  12", 12}, {"12x4", 12},
      {"1.5.3", 1.5},   {"x12", 0},      {"", 0},     {"-", 0},     {"+-5", 0},
      {".5", 0.5},      {"1e3", 1},      {"nan", 0},  {"inf", 0},   {{'1', '\0', '2'}, 1},
      {"\xff\xfe", 0},  {"1,5", 1},      {"--5", 0},  {"5-", 5},    {"0x1F", 0}};
  for (const auto& [text, value] : rows) EXPECT_EQ(Val(text), value) << text;
}

// Shown figures are compared with limits by people and by clients: 0.25 is 0.3 and 2.35 is 2.4, as on paper.
TEST(FormatFixed, RoundsAsOnPaper) {
  const auto expect = [](int decimals, const std::map<double, const char*>& rows) {
    for (const auto& [value, text] : rows) {
      EXPECT_EQ(FormatFixed(value, decimals), text);
      EXPECT_DOUBLE_EQ(RoundToDecimals(value, decimals), std::stod(text));
    }
  };
  expect(0, {{99.6, "100"}, {0.5, "1"}, {0.4999, "0"}, {0, "0"}, {123456.789, "123457"}, {0.001, "0"}});
  expect(1, {{0.25, "0.3"}, {-0.25, "-0.3"}, {0.15, "0.2"}, {2.35, "2.4"}, {9.96, "10.0"}, {99.95, "100.0"}});
  expect(1, {{0.04, "0.0"}, {-0.04, "0.0"}, {0.05, "0.1"}, {5, "5.0"}, {1830.2, "1830.2"}, {-273.15, "-273.2"}});
  expect(1, {{1e15, "1000000000000000.0"}});
  expect(5, {{46347.12345678, "46347.12346"}});
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

  const std::pair<const char*, std::int32_t> integers[] = {{"350", 350}, {"-7", -7},   {"+7", 7},
                                                           {"2.5", 2},   {"3.5", 4},   {"-2.5", -2},
                                                           {" 5 ", 5},   {"1e2", 100}, {"2147483647.4", 2147483647},
                                                           {"1,6", 2},   {"1.000", 1}};
  for (const auto& [text, value] : integers) EXPECT_EQ(TextToInteger(text), value) << text;
  for (const char* bad : {"abc", "", " ", "12a", "1.2.3", "inf", "nan", "0x10", "+-1", "1,000", "1,5,1"}) {
    EXPECT_EQ(ErrorOf([&] { return TextToInteger(bad); }), RunTimeError::kTypeMismatch) << bad;
  }
  for (const char* large : {"2147483648", "-2147483649", "1e10", "1e999"}) {
    EXPECT_EQ(ErrorOf([&] { return TextToInteger(large); }), RunTimeError::kOverflow) << large;
  }
  EXPECT_EQ(ErrorOf([] { return RoundToInteger(std::nan("")); }), RunTimeError::kOverflow);
}

// A store that was written under another locale is read; what may be a thousand is not taken for one.
TEST(SettingTexts, RealsAreReadWithEitherSeparatorAndWrittenWithTheLocales) {
  const NumberLocale comma{.decimal_separator = ',', .name = "de_DE"};
  for (const NumberLocale& locale : {NumberLocale{}, comma}) {
    EXPECT_DOUBLE_EQ(TextToReal("0.278", locale), 0.278);
    EXPECT_DOUBLE_EQ(TextToReal("0,278", locale), 0.278);
    for (const char* bad : {"1.000,5", "1,000.5", "1 000,5", "1,2,3", ",", "12;0"}) {
      EXPECT_EQ(ErrorOf([&] { return TextToReal(bad, locale); }), RunTimeError::kTypeMismatch) << bad;
    }
  }
  EXPECT_EQ(ErrorOf([&] { return TextToInteger("1.000", comma); }), RunTimeError::kTypeMismatch);
  EXPECT_DOUBLE_EQ(TextToReal("-7.13329E-07"), -7.13329e-07);
  std::string text;
  (void)ErrorOf([&] { return TextToReal("12;0", comma); }, &text);
  EXPECT_NE(text.find("de_DE"), std::string::npos) << text;
  const std::pair<double, const char*> rows[] = {
      {12.0, "12"}, {0.1, "0.1"}, {-0.000000713329, "-0.000000713329"}, {1e21, "1000000000000000000000"}};
  for (const auto& [value, expected] : rows) EXPECT_EQ(RealToText(value), expected);
  EXPECT_EQ(RealToText(-1.5, comma), "-1,5");
}

// What the language of the first clients prints for these numbers.
TEST(GeneralText, ShowsTheDigitsThatAPersonSees) {
  const std::tuple<double, const char*, const char*> rows[] = {{-0.0, "0", "0"},
                                                               {-9.99, "-9.99", "-9.99"},
                                                               {1.0 / 30, "3.33333333333333E-02", "3.333334E-02"},
                                                               {-7.13329e-07, "-0.000000713329", "-7.13329E-07"},
                                                               {12345678, "12345678", "1.234568E+07"},
                                                               {9999999.6, "9999999.6", "1E+07"},
                                                               {1e15, "1E+15", "1E+15"},
                                                               {1e-120, "1E-120", "0"}};
  for (const auto& [value, as_double, as_single] : rows) {
    EXPECT_EQ(GeneralText(value), as_double);
    EXPECT_EQ(GeneralText(static_cast<float>(value)), as_single);
  }
  EXPECT_EQ(GeneralText(-0.5, NumberLocale{.decimal_separator = ','}), "-0,5");
}

TEST(Message, IsSaidInALanguageThatOrdersItsPartsDifferently) {
  const Message message = Message::Of("%1 of %2").With(Message::Of("three"), std::string("100%1"));
  const Language german = [](const char* english) {
    return std::string(english == std::string("three") ? "drei" : "von %2 nun %1");
  };
  EXPECT_EQ(message.English(), "three of 100%1");
  EXPECT_EQ(message.In(german), "von 100%1 nun drei");
  EXPECT_EQ(Joined(message, "; ", {}).In(german), message.In(german));
}

}  // namespace
}  // namespace orvalis
