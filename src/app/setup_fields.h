#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "base/message.h"
#include "base/text.h"
#include "config/settings.h"
#include "unit/unit_commands.h"

namespace orvalis {

/// One text box of the setup dialog: its setting, valid range, messages, and replacement value for bad input. Messages
/// and replacement values are fixed, even where they name another field.
struct SetupField {
  enum class Range { kAny, kNotBelowZero, kAboveZero, k1To300, k0To3600, k1To65535 };
  /// None for fields without a setting.
  using Member = std::variant<std::monostate, std::int32_t Settings::*, double Settings::*>;

  std::string_view name;  ///< the property's name, and the text box's object name
  Member member;
  bool whole_number;
  Range range;
  std::string_view range_message;
  std::string_view conversion_message;
  double replacement;
  std::string_view replacement_text;  ///< put into the text box on bad input; "" keeps the user's text
};

/// The result of reading a text box.
struct SetupReading {
  double value = 0;
  std::string_view message;           ///< "" when the text was good
  std::string_view replacement_text;  ///< for the text box; "" leaves it unchanged
  /// Whether the value is the sentinel -9999, so that the dialog must be shown again.
  [[nodiscard]] bool IsSentinel() const { return value == kSentinel; }
  static constexpr double kSentinel = -9999;
};

/// The text boxes, in reading order.
[[nodiscard]] std::span<const SetupField> SetupFields();

/// "must be above 0"; "" for a field that takes any number.
[[nodiscard]] Message RangeText(SetupField::Range range);

/// Converts and checks `text`. Never throws.
[[nodiscard]] SetupReading ReadSetupField(const SetupField& field, std::string_view text, NumberLocale locale);
/// The text box's text for `settings`; "0" for fields without a setting.
[[nodiscard]] std::string SetupFieldText(const SetupField& field, const Settings& settings, NumberLocale locale);
/// Stores a value in `settings`. Throws RunTimeError kOverflow if it does not fit the member's type.
void StoreSetupField(const SetupField& field, double value, Settings& settings);

/// One check box that is applied on OK. Some settings are Boolean, others 0 and 1.
struct SetupFlag {
  std::string_view name;  ///< the check box's object name
  std::variant<bool Settings::*, std::int32_t Settings::*> member;

  [[nodiscard]] bool Get(const Settings& settings) const;
  void Set(bool value, Settings& settings) const;
};
[[nodiscard]] std::span<const SetupFlag> SetupFlags();

/// One list to choose from; the setting is the row.
struct SetupChoice {
  std::string_view name;  ///< the list's object name
  std::int32_t Settings::*member;
};
[[nodiscard]] std::span<const SetupChoice> SetupChoices();

/// One text that is stored as it is typed.
struct SetupText {
  std::string_view name;  ///< the control's object name
  std::string Settings::*member;
};
[[nodiscard]] std::span<const SetupText> SetupTexts();

/// The file of an alert; its check box is one of the flags.
struct SetupFile {
  std::string_view name;       ///< the file field's object name
  std::string_view check_box;  ///< checking it asks for the file
  bool is_sound;               ///< otherwise a program
  std::string Settings::*path;
  std::string_view alert;   ///< its name for programs
  bool of_verdict = false;  ///< the check box has no setting then: the file is given when it is named
};
[[nodiscard]] std::span<const SetupFile> SetupFiles();

/// One switch of the unit.
struct SetupUnitOption {
  std::string_view name;
  bool UnitOptions::*member;
};
[[nodiscard]] std::span<const SetupUnitOption> SetupUnitOptions();

}  // namespace orvalis
