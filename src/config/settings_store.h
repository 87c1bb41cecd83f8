#pragma once

#include <string>
#include <string_view>

#include "base/text.h"
#include "config/profile.h"
#include "config/settings.h"
#include "config/settings_table.h"

namespace orvalis {

/// Access to the stored settings. All operations throw RunTimeError when the profile fails.
class SettingsStore {
 public:
  /// `program_folder` is the default folder of the logs, without a trailing separator.
  SettingsStore(Profile& profile, std::string program_folder, NumberLocale locale)
      : profile_(profile), program_folder_(std::move(program_folder)), locale_(locale) {}

  /// Registers the driver with the profile. To be called first: a profile may refuse an unknown driver.
  void Register();

  /// To be called before the settings are loaded: a store that is made because there was none gets the mark that the
  /// assistant is due. One that was destroyed or has another layout does not: its user knows the program.
  void OfferAssistant() { offers_assistant_ = true; }

  /// Whether the store has the current layout; otherwise it is reset completely.
  [[nodiscard]] bool HasCurrentLayout() const;
  /// Resets a store with another layout, or none, to the defaults, by design losing all its values. A destroyed one is
  /// first restored from its copy, see `Profile::KeepSafe`.
  void EnsureLayout();

  /// Throws RunTimeError when the store was destroyed, saying what the next start will do about it.
  void CheckIntact() const;
  /// The notice about a destroyed store, "" when there is none or it was acknowledged. Valid after `EnsureLayout`;
  /// cheap enough to be called every second.
  [[nodiscard]] std::string LossNotice() const;
  void AcknowledgeLoss();

  /// Ensures the layout and reads every key that has a member, except "Left" and "Top", which are read when the panel
  /// is placed. Throws RunTimeError, naming store, key and text, for a text that does not fit its type; only
  /// "AutoConnect" is set to 0 instead.
  Settings LoadSettings();

  /// The text of one key, or "".
  [[nodiscard]] std::string Get(const SettingKey& key) const;
  /// One key by its name, converted; throws like `LoadSettings`.
  void Load(std::string_view name, Settings& settings) const;

  /// Writes one key from `settings`, as the immediate switches and the shutdown do.
  void Write(std::string_view name, const Settings& settings);
  /// Writes one key that has no member, such as "COM Port".
  void WriteText(std::string_view name, std::string_view text);

  /// Writes the settings of the setup dialog, in a fixed order.
  void SaveSetupSettings(const Settings& settings);

  [[nodiscard]] Profile& profile() const { return profile_; }
  [[nodiscard]] NumberLocale locale() const { return locale_; }
  [[nodiscard]] const std::string& program_folder() const { return program_folder_; }

 private:
  void LoadKey(const SettingKey& key, Settings& settings) const;

  Profile& profile_;
  std::string program_folder_;
  NumberLocale locale_;
  bool offers_assistant_ = false;
  bool kept_safe_ = true;  ///< whether the profile supports KeepSafe, and so may have a notice
};

}  // namespace orvalis
