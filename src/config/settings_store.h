#pragma once

#include <string>
#include <string_view>

#include "base/text.h"
#include "config/profile.h"
#include "config/settings.h"
#include "config/settings_table.h"

namespace orvalis {

/// The settings in their store. All operations throw RunTimeError when the profile fails.
class SettingsStore {
 public:
  /// `program_folder` is the default folder of the logs, without a trailing separator.
  SettingsStore(Profile& profile, std::string program_folder, NumberLocale locale)
      : profile_(profile), program_folder_(std::move(program_folder)), locale_(locale) {}

  /// Makes the driver known to the profile, before anything else is asked of it: one that does not know it may refuse.
  void Register();

  /// Whether the store carries the current layout; one that does not is reset as a whole.
  [[nodiscard]] bool HasCurrentLayout() const;
  /// Gives a store with another layout, or none, the stamp and every default. All former values are lost, by design.
  /// One that was destroyed gets its copy back first, see `Profile::KeepSafe`.
  void EnsureLayout();

  /// Throws RunTimeError when the store was destroyed, and says what the next start will do about it.
  void CheckWhole() const;
  /// What became of a store that was destroyed, "" when nothing did or a person has acknowledged it. Known when the
  /// layout was made sure of; cheap enough to be asked each second.
  [[nodiscard]] std::string LossNotice() const;
  void AcknowledgeLoss();

  /// Makes sure of the layout and reads every key that has a member, except "Left" and "Top", which are read when the
  /// panel is placed. Throws RunTimeError, naming store, key and text, for a text that its type cannot hold;
  /// "AutoConnect" alone is set to 0 instead.
  Settings LoadSettings();

  /// The text of one key, "" where there is none.
  [[nodiscard]] std::string Get(const SettingKey& key) const;
  /// One key by its name, converted; throws like `LoadSettings`.
  void Load(std::string_view name, Settings& settings) const;

  /// Writes one key from `settings`, as the immediate switches and the shutdown do.
  void Write(std::string_view name, const Settings& settings);
  /// Writes one key that has no member, such as "COM Port".
  void WriteText(std::string_view name, std::string_view text);

  /// Writes what the setup dialog edits, in its fixed order.
  void SaveSetupSettings(const Settings& settings);

  [[nodiscard]] Profile& profile() const { return profile_; }
  [[nodiscard]] NumberLocale locale() const { return locale_; }
  [[nodiscard]] const std::string& program_folder() const { return program_folder_; }

 private:
  void LoadKey(const SettingKey& key, Settings& settings) const;

  Profile& profile_;
  std::string program_folder_;
  NumberLocale locale_;
  bool kept_safe_ = true;  ///< the profile may have a notice; false when it does not look after itself
};

}  // namespace orvalis
