#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "base/text.h"
#include "config/settings.h"
#include "unit/unit_commands.h"

namespace orvalis {

/// One text box of the setup dialog: the setting behind it, what it accepts, what it says, and what it stands for when
/// it was filled in badly. Messages and replacement values are the system's own, also where they name another field.
struct SetupField {
  enum class Range { kAny, kNotBelowZero, kAboveZero, k1To300 };
  /// None for fields without a setting.
  using Member = std::variant<std::monostate, std::int32_t Settings::*, double Settings::*>;

  std::string_view name;  ///< the property's name, and the text box's object name
  Member member;
  bool whole_number;
  Range range;
  std::string_view range_message;
  std::string_view conversion_message;
  double replacement;
  std::string_view replacement_text;  ///< put into the text box on bad input; "" leaves the user's text
};

/// What reading a text box gave.
struct SetupReading {
  double value = 0;
  std::string_view message;           ///< "" when the text was good
  std::string_view replacement_text;  ///< for the text box; "" leaves it as it is
  /// The dialog has to be shown again: the value is the sentinel -9999.
  [[nodiscard]] bool IsSentinel() const { return value == kSentinel; }
  static constexpr double kSentinel = -9999;
};

/// The text boxes, in the order in which they are read back.
[[nodiscard]] std::span<const SetupField> SetupFields();

/// "must be above 0"; "" for a field that takes any number.
[[nodiscard]] std::string_view RangeText(SetupField::Range range);

/// Converts and checks `text`. Never throws.
[[nodiscard]] SetupReading ReadSetupField(const SetupField& field, std::string_view text, NumberLocale locale);
/// The text box's text for `settings`; "0" for fields without a setting.
[[nodiscard]] std::string SetupFieldText(const SetupField& field, const Settings& settings, NumberLocale locale);
/// Puts a value that was read into `settings`. Throws RunTimeError kOverflow beyond the member's type.
void StoreSetupField(const SetupField& field, double value, Settings& settings);

/// One check box that is taken over on OK. Some settings are Boolean, others 0 and 1.
struct SetupFlag {
  std::string_view name;  ///< the check box's object name
  std::variant<bool Settings::*, std::int32_t Settings::*> member;

  [[nodiscard]] bool Get(const Settings& settings) const;
  void Set(bool value, Settings& settings) const;
};
[[nodiscard]] std::span<const SetupFlag> SetupFlags();

/// One file of an alert: its switch is one of the flags.
struct SetupFile {
  std::string_view name;       ///< the file field's object name
  std::string_view check_box;  ///< the switch that asks for the file when it is checked
  bool is_sound;               ///< otherwise a program
  std::string Settings::*path;
};
[[nodiscard]] std::span<const SetupFile> SetupFiles();

/// One switch of the unit.
struct SetupUnitOption {
  std::string_view name;
  bool UnitOptions::*member;
};
[[nodiscard]] std::span<const SetupUnitOption> SetupUnitOptions();

}  // namespace orvalis
