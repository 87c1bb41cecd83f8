#include "config/profile_command.h"

#include <istream>
#include <ostream>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

/// What the program would find: a store of another layout is reset at the next start.
std::string EffectiveText(const SettingKey& key, const SettingsStore& store) {
  return store.HasCurrentLayout() ? store.Get(key) : DefaultText(key, store.program_folder(), store.locale());
}

void List(const SettingsStore& store, std::ostream& out) {
  for (const SettingKey& key : SettingKeys()) {
    if (!key.subkey.empty()) out << key.subkey << '/';
    out << key.name << " = ";
    const std::string text = EffectiveText(key, store);
    const bool secret = key.name == kPasswordKey && !text.empty() && text != key.default_text;
    out << (secret ? "(hidden; \"orvalis profile get\" shows it)" : text) << '\n';
  }
}

void Set(const SettingKey& key, std::string value, SettingsStore& store, std::istream& in) {
  if (value == "-") {
    value.clear();
    std::getline(in, value);
  }
  CheckText(key, value, store.locale());
  store.EnsureLayout();
  store.WriteText(key.name, value);
}

}  // namespace

int RunProfileCommand(const ProfileCommand& command, SettingsStore& store, std::istream& in, std::ostream& out,
                      std::ostream& error) {
  constexpr int kFailed = 1;
  constexpr int kNoSuchKey = 2;
  try {
    store.Register();
    if (command.verb == ProfileCommand::Verb::kList) {
      List(store, out);
      return 0;
    }
    const SettingKey* key = FindSettingKey(command.key);
    if (key == nullptr || (command.subkey && *command.subkey != key->subkey)) {
      error << "orvalis: there is no setting \"" << command.key << '"';
      if (command.subkey) error << " under the subkey \"" << *command.subkey << '"';
      error << "; \"orvalis profile list\" shows all\n";
      return kNoSuchKey;
    }
    if (command.verb == ProfileCommand::Verb::kGet) {
      out << EffectiveText(*key, store) << '\n';
      return 0;
    }
    try {
      Set(*key, command.value, store, in);
    } catch (const RunTimeError& refused) {
      if (refused.number() != RunTimeError::kTypeMismatch && refused.number() != RunTimeError::kOverflow) throw;
      error << "orvalis: the setting \"" << key->name << "\" is of the type " << Name(key->type) << ": "
            << refused.what() << '\n';
      return kFailed;
    }
    return 0;
  } catch (const RunTimeError& failure) {
    error << "orvalis: " << failure.what() << '\n';
    return kFailed;
  }
}

}  // namespace orvalis
