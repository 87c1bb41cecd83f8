#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "base/text.h"
#include "config/settings.h"

namespace orvalis {

/// How a key's text converts; the conversions are those of base/text.h.
enum class KeyType { kBoolean, kInteger, kReal, kText };
[[nodiscard]] std::string_view Name(KeyType type);

/// The member that a key is loaded into; none for keys that live in the store alone.
using SettingMember = std::variant<std::monostate, bool Settings::*, std::int32_t Settings::*, double Settings::*,
                                   std::string Settings::*>;

/// One key of the profile.
struct SettingKey {
  std::string_view name;
  std::string_view subkey;  ///< "" or "Capabilities"
  KeyType type;
  std::optional<std::string_view> default_text;  ///< none: the key is not written when the store is initialised
  SettingMember member;
};

/// The layout that the store must carry under "RegVer".
inline constexpr std::string_view kLayoutVersion = "2.18";
inline constexpr std::string_view kLayoutKey = "RegVer";
/// The serial port, and which one an empty text stands for.
inline constexpr std::string_view kPortKey = "COM Port";
inline constexpr std::string_view kDefaultPort = "2";
/// Stands for the program's own folder as a default.
inline constexpr std::string_view kProgramFolder = "<program folder>";
/// The key that holds a password; it is never listed.
inline constexpr std::string_view kPasswordKey = "g_sPWS_password";

/// All keys, in the order in which the store is initialised.
[[nodiscard]] std::span<const SettingKey> SettingKeys();

/// The key called `name`, or nullptr. Names are unique over all subkeys.
[[nodiscard]] const SettingKey* FindSettingKey(std::string_view name);

/// The text that initialises `key`; "" where it has no default. Numbers are written as the locale writes them, so that
/// they are read back as what they are.
[[nodiscard]] std::string DefaultText(const SettingKey& key, std::string_view program_folder, NumberLocale locale);

/// Converts `text` into the member of `key`. Throws RunTimeError as the conversions of base/text.h do.
void SetFromText(const SettingKey& key, std::string_view text, NumberLocale locale, Settings& settings);

/// The member of `key` as the text to store; "" for keys without a member.
[[nodiscard]] std::string ToText(const SettingKey& key, const Settings& settings, NumberLocale locale);

/// Throws RunTimeError when the type of `key` cannot hold `text`.
void CheckText(const SettingKey& key, std::string_view text, NumberLocale locale);

}  // namespace orvalis
