#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orvalis_unit {

// The unit's settings, in the order of SettingTable().
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
  bool is_signed;         // a "+" or "-" is required before the digits
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
  kDropped     // `text` began like a request but is not one
};

struct Request {
  RequestKind kind;
  std::string text;  // the bytes of the request
  Setting setting{};
  int value = 0;
};

// Parses the line byte by byte. It resynchronises at the next ":" or "#", which always begin a new request.
class CommandParser {
 public:
  // The request that this byte completes or breaks; nothing while a request is incomplete, or for a stray byte between
  // requests.
  std::optional<Request> Feed(char byte);

  // Drops the partial request, as the unit does after the line was lost.
  void Reset() { text_.clear(); }

 private:
  std::optional<Request> Finish(RequestKind kind);
  std::optional<Request> Extend();

  std::string text_;  // the partial request, with its ":" or "#"; empty between requests
};

}  // namespace orvalis_unit
