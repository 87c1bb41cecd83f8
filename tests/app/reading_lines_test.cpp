#include "app/reading_lines.h"

#include "tests/support/link_fixture.h"

namespace orvalis {
namespace {

class ReadingLinesTest : public test::LinkFixture {
 protected:
  [[nodiscard]] std::string Json() {
    std::string line;
    poll.Listen([&](const SensorFrame& frame) {
      line = ReadingJson({.time = clock.LocalNow(), .weather = weather, .frame = frame, .now = observer.Now()});
    });
    Connect(4);
    return line;
  }
};

// The figures were worked with bc from the frame's HUM=0520 TP=-02000 TTP=+00600 TA=+00500 WND=0020.
TEST_F(ReadingLinesTest, JsonHasEveryFieldInOrder) {
  EXPECT_EQ(
      Json(),
      R"({"time":"2026-11-21T21:04:05.000+00:00","source":"unit","connected":true,"frame":")" + test::LiveFrame() +
          R"(","ambient_c":5.0,"body_c":6.0,"rain":120,"humidity_percent":48.867,"dew_point_c":-4.881,"sky_c":-20.0,)"
          R"("clear_sky_c":-20.223,"diff_c":25.0,"cloud_word":"Clear","clouds":0.0,"wind_mph":18.0,)"
          R"("wind_average_mph":18.0,"wind_gust_mph":18.0,"wind_word":"Windy","rain_word":"Dry","light":1000.0,)"
          R"("light_word":"Dark","heater":"N","relay":"N","safe":false,"reasons":["hold"],"age_s":0.0,"unit_unsafe":false,"unsafe":true})");
}

TEST_F(ReadingLinesTest, BytesThatAreNoTextStayJson) {
  port.frame[10] = '"';
  port.frame[11] = '\\';
  port.frame[12] = '\n';
  port.frame[13] = '\xe9';
  const std::string line = Json();
  EXPECT_NE(line.find(R"(\"\\\né)"), std::string::npos) << line;
}

TEST_F(ReadingLinesTest, WhatIsNotKnownYetIsNoNumber) {
  settings.TempsAvgCount = 5;
  const std::string line = Json();
  for (const char* field : {"\"ambient_c\":null", "\"diff_c\":null", "\"humidity_percent\":null", "\"sky_c\":-20"}) {
    EXPECT_NE(line.find(field), std::string::npos) << line;
  }
}

TEST_F(ReadingLinesTest, EventsAreLinesToo) {
  const Event event{clock.LocalNow(), "connect failed: \"x\"\n"};
  EXPECT_EQ(EventText({clock.LocalNow(), "lost: gone"}, clock.style()), "21:04:05  lost: gone");
  EXPECT_EQ(EventJson(event), R"({"time":"2026-11-21T21:04:05.000+00:00","event":"connect failed: \"x\"\n"})");
}

}  // namespace
}  // namespace orvalis
