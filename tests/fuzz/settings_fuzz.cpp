// The settings file, as its lines reach the table of settings: read, written and read again.
#include <string>

#include "base/run_time_error.h"
#include "config/settings_store.h"
#include "config/settings_table.h"
#include "reading/display_units.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/memory_profile.h"
#include "unit/unit_commands.h"

namespace orvalis {
namespace {

using fuzz::Require;

/// Reads "[subkey]" and "name=value", as far as the keys need it. Returns what the rules for stores look at.
ProfileValues ReadIni(fuzz::Input& input, test::MemoryProfile& profile) {
  ProfileValues paths;
  std::string subkey;
  while (!input.empty()) {
    const std::string_view line = input.Until('\n');
    const std::size_t equals = line.find('=');
    if (line.starts_with('[')) {
      subkey = line.substr(1, line.find(']') - 1);
      if (subkey == "General") subkey.clear();
    } else if (equals != std::string_view::npos) {
      const std::string name(line.substr(0, equals));
      const std::string value(line.substr(equals + 1));
      profile.values[{subkey, name}] = value;
      paths[std::string(subkey).append(subkey.empty() ? "" : "/").append(name)] = value;
    }
  }
  return paths;
}

/// Whether a text without which the program cannot start is unreadable.
bool KeepsFromStarting(const SettingsStore& store) {
  return std::ranges::any_of(SettingKeys(), [&](const SettingKey& key) {
    if (key.when_unreadable) return false;
    try {
      CheckText(key, store.Get(key), store.locale());
      return false;
    } catch (const RunTimeError&) {
      return true;
    }
  });
}

void CheckSame(const Settings& one, const Settings& other, NumberLocale locale) {
  for (const SettingKey& key : SettingKeys()) {
    Require(ToText(key, one, locale) == ToText(key, other, locale), "a setting is read back as stored", PathOf(key));
  }
}

void CheckLimits(const Settings& settings) {
  for (const SettingKey& key : SettingKeys()) {
    const auto* member = std::get_if<std::int32_t Settings::*>(&key.member);
    if (member == nullptr || key.name == "Left" || key.name == "Top") continue;
    const std::int32_t value = settings.*(*member);
    Require(value >= key.lowest && value <= key.highest, "a setting is within its limits", PathOf(key));
  }
  for (const UnitCommand& command : UnitCommands()) {
    const std::int32_t value = command.Value(settings, {});
    Require(command.Encode(value).size() >= 4 && command.Encode(value).size() <= 7, "a command has its length",
            command.letters);
    Require(command.Received(command.Received(value)) == command.Received(value), "a cut command stays as it is",
            command.letters);
  }
  Require(!UnitsOf(settings).WindName().empty(), "there is a unit of wind");
}

}  // namespace
}  // namespace orvalis

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvalis;
  fuzz::Input input(data, size);
  const NumberLocale locale = input.Byte() % 2 == 0 ? NumberLocale{} : NumberLocale{',', "de"};
  test::MemoryProfile profile;
  const ProfileValues paths = ReadIni(input, profile);
  const StoreRules rules = RulesForSettings(locale);
  const bool good = rules.good(paths);
  Require(!good || rules.fault(paths).empty(), "what may be the copy is not destroyed");
  SettingsStore store(profile, "/opt/orvalis", locale);
  const bool stamped = store.HasCurrentLayout();
  Settings settings;
  try {
    settings = store.LoadSettings();
  } catch (const RunTimeError& error) {
    Require(!good, "a start with a good copy succeeds", error.what());
    Require(stamped, "a start with the defaults succeeds", error.what());
    Require(KeepsFromStarting(store), "a start succeeds without what may be unreadable", error.what());
    return 0;
  }
  CheckLimits(settings);
  store.SaveSetupSettings(settings);
  CheckSame(settings, store.LoadSettings(), locale);
  return 0;
}
