#include "command_parser.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace orvalis_unit {
namespace {

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
  for (const auto& [bytes, understood] : cases) EXPECT_EQ(Understood(bytes), understood) << bytes;
}

}  // namespace
}  // namespace orvalis_unit
