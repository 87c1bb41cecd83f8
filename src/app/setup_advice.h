#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "config/settings_table.h"

namespace orvalis {

/// What a person should know of each text box of the setup dialog before OK, in the order of `SetupFields`: what would
/// be stored and why where that is not what was typed, what the unit would get in its place, and limits that make no
/// sense together. "" where all is as typed.
[[nodiscard]] std::vector<std::string> AdviceOnSetup(std::span<const std::string> texts, NumberLocale locale);

/// Why the setting `key` is not to be `text`, which its type can hold; "" when it may be. What the dialog answers with
/// a replacement is refused where nobody would see that, and so is a sign that the unit cannot be sent.
[[nodiscard]] std::string RefusalOf(const SettingKey& key, std::string_view text, NumberLocale locale);

/// What the unit gets in the place of `text`, "" when it gets that or nothing.
[[nodiscard]] std::string CutForUnit(const SettingKey& key, std::string_view text, NumberLocale locale);

}  // namespace orvalis
