#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/message.h"
#include "base/text.h"
#include "config/settings_table.h"

namespace orvalis {

/// The settings that OK would make of the texts of `SetupFields`, with the replacements of bad input; the others are at
/// their defaults.
[[nodiscard]] Settings TypedSettings(std::span<const std::string> texts, NumberLocale locale);

/// Advice for each text box of the setup dialog before OK, in the order of `SetupFields`: what would be stored instead
/// of what was typed and why, what the unit would receive instead, and limits that contradict each other. "" where the
/// text is taken as typed.
[[nodiscard]] std::vector<Message> AdviceOnSetup(std::span<const std::string> texts, NumberLocale locale);

/// Why the setting `key` must not be `text`, even though it fits its type, or "". Refused is what the dialog would
/// replace, because a replacement would go unnoticed here, and a sign that the command to the unit lacks.
[[nodiscard]] std::string RefusalOf(const SettingKey& key, std::string_view text, NumberLocale locale);

/// What the unit receives instead of `text`, or "" if it receives `text` or nothing.
[[nodiscard]] std::string CutForUnit(const SettingKey& key, std::string_view text, NumberLocale locale);

}  // namespace orvalis
