#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "base/message.h"
#include "config/settings.h"
#include "reading/sensor_frame.h"

namespace orvalis {

/// The unit's switches. They are kept in the unit, not in the profile: a connection reads them from the unit, the setup
/// dialog changes them.
struct UnitOptions {
  bool allow_heater = false;
  bool force_heater = false;
  bool allow_relay = false;
  bool force_relay = false;
  bool allow_rain = false;  ///< the unit does not report this one
  bool allow_clouds = false;
  bool allow_light = false;
  bool allow_wind = false;

  /// Reads the switches that `frame` reports; the one that it does not report counts as off.
  void TakeFrom(const SensorFrame& frame);

  [[nodiscard]] bool operator==(const UnitOptions& other) const = default;
};

/// One command to the unit: ":", two letters and the value.
struct UnitCommand {
  enum class Form { kOnOff, kOneDigit, kTwoDigits, kThreeDigits, kSignAndThreeDigits };

  const char* letters;
  Form form;
  bool UnitOptions::*option;                          ///< for kOnOff
  bool (*reported)(const UnitOptions& options);       ///< for kOnOff: whether a frame reports the switch
  std::int32_t (*setting)(const Settings& settings);  ///< for the numbers
  std::string_view key = {};                          ///< the setting's name
  Phrase takes = Message::Of("");                     ///< what the command can carry, for a person: "three digits"

  [[nodiscard]] std::int32_t Value(const Settings& settings, const UnitOptions& options) const;
  /// The characters to transmit for `value`, one at a time. Excess digits are cut off.
  [[nodiscard]] std::string Encode(std::int32_t value) const;
  /// The number that the unit receives for `value`.
  [[nodiscard]] std::int32_t Received(std::int32_t value) const;
  /// Describes what the unit receives instead of `value`, or "" if it is sent unchanged.
  [[nodiscard]] Message CutText(std::int32_t value) const;
  /// Whether the command carries no sign.
  [[nodiscard]] bool Unsigned() const { return form != Form::kOnOff && form != Form::kSignAndThreeDigits; }
};

inline constexpr std::size_t kUnitCommandCount = 17;

/// All commands, in sending order.
[[nodiscard]] std::span<const UnitCommand, kUnitCommandCount> UnitCommands();

/// The command that sends the setting `key`, or nullptr.
[[nodiscard]] const UnitCommand* FindUnitCommand(std::string_view key);

/// The value last sent of every command, or none where the unit's value is unknown.
class LastSent {
 public:
  /// After a connection: the unit may be another one or have lost power, so every number is due, while the switches
  /// start as reported and connecting changes none of them.
  void BeginConnection(const UnitOptions& reported);
  /// After a silence: the unit may have lost power, so everything is due, with the switches as before. Only a switch
  /// that the unit does not report and that was never set is left alone, because its state is unknown.
  void BeginAfterSilence();

  [[nodiscard]] bool IsDue(std::size_t command, std::int32_t value) const { return values_[command] != value; }
  void Store(std::size_t command, std::int32_t value) {
    values_[command] = value;
    known_[command] = true;
  }

 private:
  std::array<std::optional<std::int32_t>, kUnitCommandCount> values_;
  std::array<bool, kUnitCommandCount> known_{};  ///< whether the unit's value was reported or sent
};

}  // namespace orvalis
