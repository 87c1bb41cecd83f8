#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

#include "config/settings.h"
#include "reading/sensor_frame.h"

namespace orvalis {

/// The unit's own switches. They live in the unit, not in the profile: a connection takes them over from what the unit
/// reports, the setup dialog changes them.
struct UnitOptions {
  bool allow_heater = false;
  bool force_heater = false;
  bool allow_relay = false;
  bool force_relay = false;
  bool allow_rain = false;  ///< the unit does not report this one
  bool allow_clouds = false;
  bool allow_light = false;
  bool allow_wind = false;

  /// Takes over what `frame` reports; the switch that it does not report counts as off.
  void TakeFrom(const SensorFrame& frame);

  [[nodiscard]] bool operator==(const UnitOptions& other) const = default;
};

/// One command to the unit: ":", two letters and the value.
struct UnitCommand {
  enum class Form { kOnOff, kOneDigit, kTwoDigits, kThreeDigits, kSignAndThreeDigits };

  const char* letters;
  Form form;
  bool UnitOptions::*option;                          ///< for kOnOff
  bool (*reported)(const UnitOptions& options);       ///< for kOnOff: whether a frame tells how the switch stands
  std::int32_t (*setting)(const Settings& settings);  ///< for the numbers
  std::string_view key = {};                          ///< the setting's name
  std::string_view takes = {};                        ///< what the unit can be sent, for a person: "three digits"

  [[nodiscard]] std::int32_t Value(const Settings& settings, const UnitOptions& options) const;
  /// What goes over the line for `value`, one character a transmission. Digits beyond the form's are cut off.
  [[nodiscard]] std::string Encode(std::int32_t value) const;
  /// Says what the unit gets in the place of `value`, "" when it gets that.
  [[nodiscard]] std::string CutText(std::int32_t value) const;
  /// Whether there is no sign in the command's form.
  [[nodiscard]] bool Unsigned() const { return form != Form::kOnOff && form != Form::kSignAndThreeDigits; }
};

inline constexpr std::size_t kUnitCommandCount = 17;

/// All commands, in the order in which a working cycle sends what changed.
[[nodiscard]] std::span<const UnitCommand, kUnitCommandCount> UnitCommands();

/// The command that sends the setting `key`, or nullptr.
[[nodiscard]] const UnitCommand* FindUnitCommand(std::string_view key);

/// For every command the value last sent, none where the unit's is not known.
class LastSent {
 public:
  /// After a connection: the unit may be another one or have lost power, so every number is due, while the switches
  /// start from what the unit reports and connecting changes none of them.
  void BeginConnection(const UnitOptions& reported);
  /// After a silence: the unit may have lost power, so everything is due, the switches as they were before it. Only a
  /// switch that the unit does not report and that nobody has set is left to the unit: how it stood is not known.
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
