#include "command_parser.h"

#include <algorithm>
#include <utility>

namespace orvalis_unit {
namespace {

constexpr char kAcknowledge = '\x06';

constexpr SettingRow OnOff(Setting setting, std::string_view code, bool on) {
  return {setting, code, 1, false, 1, on ? 1 : 0};
}

constexpr std::array<SettingRow, kSettingCount> kTable = {{
    OnOff(Setting::kHeaterAllowed, "AH", true),
    OnOff(Setting::kHeaterForced, "SH", false),
    OnOff(Setting::kRelayAllowed, "AR", true),
    OnOff(Setting::kRelayForced, "Sr", false),
    OnOff(Setting::kRainAlarm, "Ar", true),
    OnOff(Setting::kCloudAlarm, "AX", true),
    OnOff(Setting::kLightAlarm, "AL", false),
    OnOff(Setting::kWindAlarm, "AW", true),
    {Setting::kHysteresis, "Sh", 3, false, 999, 20},
    {Setting::kRainOnTime, "ST", 3, false, 999, 60},
    {Setting::kWindThreshold, "SW", 3, false, 999, 36},
    {Setting::kRainThreshold, "SR", 3, false, 999, 350},
    {Setting::kCloudsThreshold, "SX", 3, true, 999, -5},
    {Setting::kLightThreshold, "SL", 3, false, 999, 950},
    {Setting::kFullCloudy, "SC", 2, false, 99, 19},
    {Setting::kWindMultiplier, "SM", 1, false, 9, 9},
    {Setting::kWindTimer, "Sd", 3, false, 999, 122},
}};

constexpr std::size_t kCodeLength = 2;

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

}  // namespace

const std::array<SettingRow, kSettingCount>& SettingTable() { return kTable; }

Settings PowerUpSettings() {
  Settings settings{};
  for (const SettingRow& row : kTable) settings[Index(row.setting)] = row.at_power_up;
  return settings;
}

std::optional<Request> CommandParser::Feed(char byte) {
  if (byte == ':' || byte == '#') {
    std::optional<Request> cut_short;
    if (!text_.empty()) cut_short = Finish(RequestKind::kDropped);
    text_ = byte;
    return cut_short;
  }
  if (text_.empty()) {
    if (byte == 'p') return Request{RequestKind::kPace, "p"};
    return {};
  }
  text_ += byte;
  return Extend();
}

std::optional<Request> CommandParser::Finish(RequestKind kind) {
  return Request{kind, std::exchange(text_, std::string())};
}

// Checks the partial request after one more byte.
std::optional<Request> CommandParser::Extend() {
  if (text_.front() == '#') return Finish(text_[1] == kAcknowledge ? RequestKind::kHandshake : RequestKind::kDropped);
  if (text_ == ":F") return Finish(RequestKind::kFrame);

  const std::string_view body = std::string_view(text_).substr(1);
  const std::string_view code = body.substr(0, kCodeLength);
  const auto row = std::ranges::find_if(kTable, [code](const SettingRow& r) { return r.code.starts_with(code); });
  if (row == kTable.end()) return Finish(RequestKind::kDropped);
  if (body.size() <= kCodeLength) return {};

  std::string_view digits = body.substr(kCodeLength);
  const bool negative = row->is_signed && digits.front() == '-';
  if (row->is_signed) {
    if (!negative && digits.front() != '+') return Finish(RequestKind::kDropped);
    digits.remove_prefix(1);
  }
  if (!std::ranges::all_of(digits, IsDigit)) return Finish(RequestKind::kDropped);
  if (digits.size() < row->digits) return {};

  int value = 0;
  for (const char digit : digits) value = value * 10 + (digit - '0');
  if (value > row->highest) return Finish(RequestKind::kDropped);
  auto request = Finish(RequestKind::kCommand);
  request->setting = row->setting;
  request->value = negative ? -value : value;
  return request;
}

}  // namespace orvalis_unit
