#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <variant>

#include "base/text.h"
#include "config/settings.h"

namespace orvalis {

/// The type of a key, converted as in base/text.h.
enum class KeyType { kBoolean, kInteger, kReal, kText };
[[nodiscard]] std::string_view Name(KeyType type);

/// The member that a key is loaded into; none for keys that exist only in the store.
using SettingMember = std::variant<std::monostate, bool Settings::*, std::int32_t Settings::*, double Settings::*,
                                   std::string Settings::*, std::optional<double> Settings::*>;

/// One key of the profile.
struct SettingKey {
  std::string_view name;
  std::string_view subkey;  ///< "", "Capabilities", "Network", "Mqtt"
  KeyType type;
  std::optional<std::string_view> default_text;  ///< none: the key is not written on initialisation
  SettingMember member;
  /// For a key without `default_text`: what a store without it, or with an empty text there, means.
  std::string_view when_absent = {};
  /// What an unreadable text means. None: the program does not start with it.
  std::optional<std::string_view> when_unreadable = {};
  /// Whole numbers beyond these limits are unreadable, and real ones that may be missing.
  std::int32_t lowest = std::numeric_limits<std::int32_t>::min();
  std::int32_t highest = std::numeric_limits<std::int32_t>::max();
};

/// The required layout version, stored under "RegVer".
inline constexpr std::string_view kLayoutVersion = "2.18";
inline constexpr std::string_view kLayoutKey = "RegVer";
/// The serial port, and the one that an empty text means.
inline constexpr std::string_view kPortKey = "COM Port";
inline constexpr std::string_view kDefaultPort = "2";
/// 1 while the assistant of the first start is due.
inline constexpr std::string_view kAssistantKey = "Assistant";
/// As a default: the program's own folder.
inline constexpr std::string_view kProgramFolder = "<program folder>";
/// Where the network's settings are.
inline constexpr std::string_view kNetworkSubkey = "Network";
inline constexpr std::string_view kMqttSubkey = "Mqtt";
/// The keys of the passwords.
inline constexpr std::string_view kPasswordKey = "g_sPWS_password";
inline constexpr std::string_view kMqttPasswordKey = "Mqtt/Password";

/// All keys, in the order in which the store is initialised.
[[nodiscard]] std::span<const SettingKey> SettingKeys();

/// The key called `path`: its name, or subkey and name, as in "Capabilities/TempMax". nullptr when there is none, or
/// when several subkeys have the name.
[[nodiscard]] const SettingKey* FindSettingKey(std::string_view path);
/// "TempMax", "Capabilities/TempMax": the name alone for a key of the root.
[[nodiscard]] std::string PathOf(const SettingKey& key);

/// Whether `key` is a password, which is never listed.
[[nodiscard]] bool IsSecret(const SettingKey& key);

/// The default text of `key`, or "". Numbers are in the locale's format, so that they are read back unchanged.
[[nodiscard]] std::string DefaultText(const SettingKey& key, std::string_view program_folder, NumberLocale locale);

/// Converts `text` into the member of `key`. Throws RunTimeError like the conversions of base/text.h.
void SetFromText(const SettingKey& key, std::string_view text, NumberLocale locale, Settings& settings);

/// The member of `key` as the text to store; "" for keys without a member.
[[nodiscard]] std::string ToText(const SettingKey& key, const Settings& settings, NumberLocale locale);

/// Throws RunTimeError when `text` does not fit the type of `key`.
void CheckText(const SettingKey& key, std::string_view text, NumberLocale locale);

}  // namespace orvalis
