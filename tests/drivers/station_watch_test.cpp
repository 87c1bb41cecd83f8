#include "station_watch.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>

#include "address.h"

namespace orvalis::indi {
namespace {

using std::chrono::seconds;

constexpr const char* kUuid = "01234567-89ab-cdef-0123-456789abcdef";

/// An observation, with `from` replaced by `to`.
std::string Body(const std::string& from = "", const std::string& to = "") {
  std::string body =
      R"({"station": "Dome A", "uuid": "01234567-89ab-cdef-0123-456789abcdef", "age_s": 2.5, "safe": true,
    "reasons": [], "values": {"ambient_c": -1.5, "humidity_percent": 40, "dew_point_c": null, "wind_m_s": 10,
    "wind_gust_m_s": -1, "cloud_cover_percent": 50, "sky_c": -20}, "words": {"rain": "Damp"}})";
  return from.empty() ? body : body.replace(body.find(from), from.size(), to);
}

TEST(StationWatch, SaysWhatTheProgramSaysInUnitsOfIndiForTenSecondsOfAge) {
  StationWatch watch("");
  EXPECT_FALSE(watch.At(seconds(100)).safe());
  watch.Take(seconds(100), Body());
  const Account account = watch.At(seconds(101));
  EXPECT_TRUE(account.safe());
  // 10 m/s are 36 km/h; a gust of -1 is none, a dew point of null neither.
  const Values expected{-1.5, 40, std::nullopt, 36, std::nullopt, 50, -20, 0.1};
  EXPECT_EQ(account.values, expected);
  watch.TakeFailure("refused");
  EXPECT_TRUE(watch.At(seconds(107) + std::chrono::milliseconds(500)).safe());
  const Account late = watch.At(seconds(107) + std::chrono::milliseconds(501));
  EXPECT_FALSE(late.safe());
  EXPECT_EQ(late.values, Values{});
  EXPECT_EQ(watch.At(seconds(111)).reasons.front().text, "no answer from Orvalis: refused");
}

TEST(StationWatch, IsUnsafeOnAnythingThatIsNotAnObservationOfNow) {
  const std::string deep = "[[[[[[[[";
  std::string deeper;
  for (int i = 0; i < 8'000; ++i) deeper += deep;
  for (const std::string& body : {std::string(),
                                  std::string("null"),
                                  std::string("[]"),
                                  std::string("{\"safe\": true}"),
                                  deeper,
                                  Body().substr(0, 150),
                                  Body() + "x",
                                  Body("\"safe\"", "\"save\""),
                                  Body("true", "\"true\""),
                                  Body("true", "1"),
                                  Body("2.5", "-0.5"),
                                  Body("2.5", "NaN"),
                                  Body("2.5", "1e999"),
                                  Body("2.5", "1e300"),
                                  Body("2.5", "\"2\""),
                                  Body("2.5", "null"),
                                  Body("2.5", "10.1"),
                                  Body("true", "false"),
                                  Body(kUuid, "dome-a"),
                                  Body("Dome A", "\xff"),
                                  Body("\"reasons\": []", "\"reasons\": {}"),
                                  Body("[]", "[1]"),
                                  Body("[]", R"([{"name": "rain", "text": "wet"}])"),
                                  Body("-1.5", "\"warm\""),
                                  Body("Damp", "Snow")}) {
    StationWatch watch("");
    watch.Take(seconds(100), Body());
    watch.Take(seconds(101), body);
    EXPECT_FALSE(watch.At(seconds(101)).safe()) << body.substr(0, 300);
    watch.TakeFailure("gone");
    EXPECT_FALSE(watch.At(seconds(101)).safe()) << body.substr(0, 300);
  }
}

TEST(StationWatch, FollowsOneStationUntilItIsTold) {
  const std::string other = Body("0123-", "ffff-");
  StationWatch watch(kUuid);
  EXPECT_FALSE(watch.FollowOther());
  watch.Take(seconds(1), other);
  EXPECT_EQ(watch.At(seconds(1)).reasons.front().name, "other-station");
  EXPECT_TRUE(watch.FollowOther());
  EXPECT_FALSE(watch.At(seconds(1)).safe());
  watch.Take(seconds(2), other);
  EXPECT_TRUE(watch.At(seconds(2)).safe());
  watch.Take(seconds(3), Body());
  EXPECT_FALSE(watch.At(seconds(3)).safe());
}

TEST(StationWatch, GivesTextsThatXmlAndAShortMessageCanTake) {
  // U+0000, U+0085 and U+FFFE become blanks; a character of two bytes does not fit the last one.
  EXPECT_EQ(Printable(std::string("a\0\xC2\x85\xEF\xBF\xBE", 7) + "\xC3\xA9\xC3\xA9", 7), "a   \xC3\xA9");
}

TEST(StationAddress, IsAHostAndAPortAndNothingElse) {
  EXPECT_EQ(Address::Read(" dome-a.local ", "80").value_or(Address{}).Text(), "dome-a.local:80");
  EXPECT_EQ(Address::Read("::1", "11111").value_or(Address{}).Text(), "[::1]:11111");
  for (const auto& [host, port] : std::initializer_list<std::pair<const char*, const char*>>{{"", "80"},
                                                                                             {"a b", "80"},
                                                                                             {"a/b", "80"},
                                                                                             {"a@b", "80"},
                                                                                             {"-a", "80"},
                                                                                             {"a:1", "80"},
                                                                                             {"a\n", ""},
                                                                                             {"a", "0"},
                                                                                             {"a", "65536"},
                                                                                             {"a", "-1"},
                                                                                             {"a", "80x"},
                                                                                             {"a", "+80"}}) {
    EXPECT_FALSE(Address::Read(host, port)) << host << " " << port;
  }
}

}  // namespace
}  // namespace orvalis::indi
