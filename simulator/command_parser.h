#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orvalis_unit {

// What the unit lets itself be told, in the order of SettingTable().
enum class Setting {
  kHeaterAllowed,
  kHeaterForced,
  kRelayAllowed,
  kRelayForced,
  kRainAlarm,
  kCloudAlarm,
  kLightAlarm,
  kWindAlarm,
  kHysteresis,       // tenths of a degree
  kRainOnTime,       // seconds
  kWindThreshold,    // counts
  kRainThreshold,    // counts
  kCloudsThreshold,  // degrees Celsius
  kLightThreshold,   // counts
  kFullCloudy,       // degrees Celsius
  kWindMultiplier,   // tenths of a mile per hour a count
  kWindTimer         // seconds
};
inline constexpr std::size_t kSettingCount = 17;

struct SettingRow {
  Setting setting;
  std::string_view code;  // class letter and command letter, as they follow ":"
  std::size_t digits;     // a single digit with highest == 1 is an on/off command
  bool is_signed;         // a "+" or "-" stands before the digits, and must
  int highest;
  int at_power_up;
};

// Indexed by Setting.
using Settings = std::array<int, kSettingCount>;

constexpr std::size_t Index(Setting setting) { return static_cast<std::size_t>(setting); }

const std::array<SettingRow, kSettingCount>& SettingTable();
Settings PowerUpSettings();

enum class RequestKind {
  kHandshake,  // "#" and ACK: one "W" is due
  kFrame,      // ":F": one frame is due
  kCommand,    // `setting` takes `value`
  kPace,       // the "p" that a program sends between the handshake and its first request
  kDropped     // `text` was begun as a request and is not one
};

struct Request {
  RequestKind kind;
  std::string text;  // the bytes that made it
  Setting setting{};
  int value = 0;
};

// Takes the line byte by byte. Nothing in it can put the parser out of step for longer than up to the next ":" or
// "#", which always begin a new request.
class CommandParser {
 public:
  // What this byte completes, or ends in vain; nothing while a request is still under way, and nothing for a stray
  // byte between requests.
  std::optional<Request> Feed(char byte);

  // Forgets the request under way, as the unit does when the line has been away.
  void Reset() { text_.clear(); }

 private:
  std::optional<Request> Finish(RequestKind kind);
  std::optional<Request> Extend();

  std::string text_;  // the request under way, with its ":" or "#"; empty between requests
};

}  // namespace orvalis_unit
