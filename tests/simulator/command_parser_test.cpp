#include "command_parser.h"

#include <gtest/gtest.h>

#include <string>

namespace orvalis_unit {
namespace {

// What the bytes are understood as, in short: W handshake, F frame, p, "SR=350", and x for what was dropped.
std::string Understood(CommandParser& parser, std::string_view bytes) {
  std::string all;
  for (const char byte : bytes) {
    const auto request = parser.Feed(byte);
    if (!request) continue;
    if (!all.empty()) all += ' ';
    switch (request->kind) {
      case RequestKind::kHandshake:
        all += 'W';
        break;
      case RequestKind::kFrame:
        all += 'F';
        break;
      case RequestKind::kCommand:
        all.append(SettingTable()[Index(request->setting)].code).append("=").append(std::to_string(request->value));
        break;
      case RequestKind::kPace:
        all += 'p';
        break;
      case RequestKind::kDropped:
        all += 'x';
        break;
    }
  }
  return all;
}

struct ParserCase {
  std::string_view bytes;
  const char* understood;
};

TEST(CommandParser, UnderstandsWhatIsSentAndFindsBackAfterWhatIsNot) {
  using namespace std::string_view_literals;
  const ParserCase cases[] = {
      {"#\x06pp:F:F", "W p p F F"},
      {":AH1:SH0:AR0:Sr1:Ar0:AX1:AL1:AW0", "AH=1 SH=0 AR=0 Sr=1 Ar=0 AX=1 AL=1 AW=0"},
      {":Sh020:ST060:SW036:SR350:SL950:Sd122", "Sh=20 ST=60 SW=36 SR=350 SL=950 Sd=122"},
      {":SX-005:SX+010:SC19:SM9", "SX=-5 SX=10 SC=19 SM=9"},
      // Cut short by the next request, which is served.
      {":SR35:F", "x F"},
      {":S#\x06", "x W"},
      {"#:F", "x F"},
      {"##\x06", "x W"},
      {":SX-:SX-007", "x SX=-7"},
      // Malformed: dropped at the first wrong byte, and the rest of it is not taken for anything.
      {":SR3a0:SR400", "x SR=400"},
      {":AH2:AH0", "x AH=0"},
      {":SX005:F", "x F"},
      {":Zz1:F", "x F"},
      {":sr350:f:F", "x x F"},
      {"#W\x06:F", "x F"},
      {":SR3500", "SR=350"},
      // Noise between requests.
      {"\0\xFF\x06SR350 F:F"sv, "F"},
      {":\0F:S\xFFR:F"sv, "x x F"},
  };
  for (const ParserCase& c : cases) {
    CommandParser parser;
    EXPECT_EQ(Understood(parser, c.bytes), c.understood) << c.bytes;
  }
}

TEST(CommandParser, PowersUpSafe) {
  const Settings settings = PowerUpSettings();
  const std::pair<Setting, int> expected[] = {
      {Setting::kRelayAllowed, 1},     {Setting::kRelayForced, 0},    {Setting::kRainAlarm, 1},
      {Setting::kWindAlarm, 1},        {Setting::kLightAlarm, 0},     {Setting::kCloudAlarm, 1},
      {Setting::kRainThreshold, 350},  {Setting::kWindThreshold, 36}, {Setting::kLightThreshold, 950},
      {Setting::kCloudsThreshold, -5}, {Setting::kRainOnTime, 60},    {Setting::kHysteresis, 20},
  };
  for (const auto& [setting, value] : expected) {
    EXPECT_EQ(settings[Index(setting)], value) << SettingTable()[Index(setting)].code;
    EXPECT_EQ(SettingTable()[Index(setting)].setting, setting);
  }
}

}  // namespace
}  // namespace orvalis_unit
