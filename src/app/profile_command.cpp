#include "app/profile_command.h"

#include <istream>
#include <ostream>

#include "app/setup_advice.h"
#include "base/run_time_error.h"

namespace orvalis {
namespace {

/// What the program would use: the next start resets a store with another layout to the defaults.
std::string EffectiveText(const SettingKey& key, const SettingsStore& store) {
  if (key.default_text && !store.HasCurrentLayout()) return DefaultText(key, store.program_folder(), store.locale());
  std::string text = store.Get(key);
  if (!key.default_text && text.empty()) return std::string(key.when_absent);
  if (!key.when_unreadable) return text;
  try {
    CheckText(key, text, store.locale());
    return text;
  } catch (const RunTimeError&) {
    return std::string(*key.when_unreadable);
  }
}

void List(const SettingsStore& store, std::ostream& out) {
  for (const SettingKey& key : SettingKeys()) {
    out << PathOf(key) << " = ";
    const std::string text = EffectiveText(key, store);
    const bool secret = IsSecret(key) && !text.empty() && text != key.default_text;
    out << (secret ? "(hidden; \"orvalis profile get\" shows it)" : text) << '\n';
  }
}

/// Returns false when `value` is refused, with the reason in `error`.
bool Set(const SettingKey& key, std::string value, SettingsStore& store, std::istream& in, std::ostream& error) {
  if (value == "-") {
    value.clear();
    std::getline(in, value);
  }
  try {
    CheckText(key, value, store.locale());
  } catch (const RunTimeError& refused) {
    error << "orvalis: the setting \"" << key.name << "\" is of the type " << Name(key.type) << ": " << refused.what()
          << '\n';
    return false;
  }
  if (const std::string why = RefusalOf(key, value, store.locale()); !why.empty()) {
    error << "orvalis: the setting \"" << key.name << "\" cannot be " << value << ": " << why << '\n';
    return false;
  }
  store.EnsureLayout();
  store.WriteText(PathOf(key), value);
  if (const std::string cut = CutForUnit(key, value, store.locale()); !cut.empty()) {
    error << "orvalis: note: " << cut << '\n';
  }
  if (const std::string loss = store.LossNotice(); !loss.empty()) error << "orvalis: note: " << loss << '\n';
  return true;
}

void Acknowledge(SettingsStore& store, std::ostream& out) {
  store.CheckIntact();
  const std::string loss = store.LossNotice();
  if (loss.empty()) {
    out << "There is nothing to acknowledge.\n";
    return;
  }
  store.AcknowledgeLoss();
  out << "Acknowledged: " << loss << '\n';
}

}  // namespace

int RunProfileCommand(const ProfileCommand& command, SettingsStore& store, std::istream& in, std::ostream& out,
                      std::ostream& error) {
  constexpr int kFailed = 1;
  constexpr int kNoSuchKey = 2;
  try {
    store.Register();
    if (command.verb == ProfileCommand::Verb::kAcknowledge) {
      Acknowledge(store, out);
      return 0;
    }
    if (command.verb == ProfileCommand::Verb::kList) {
      store.CheckIntact();
      List(store, out);
      return 0;
    }
    const bool in_subkey = command.subkey && !command.subkey->empty();
    const SettingKey* key = FindSettingKey(in_subkey ? *command.subkey + "/" + command.key : command.key);
    if (key == nullptr || (command.subkey && *command.subkey != key->subkey)) {
      error << "orvalis: there is no setting \"" << command.key << '"';
      if (command.subkey) error << " under the subkey \"" << *command.subkey << '"';
      error << "; \"orvalis profile list\" shows all\n";
      return kNoSuchKey;
    }
    if (command.verb == ProfileCommand::Verb::kGet) {
      store.CheckIntact();
      out << EffectiveText(*key, store) << '\n';
      return 0;
    }
    return Set(*key, command.value, store, in, error) ? 0 : kFailed;
  } catch (const RunTimeError& failure) {
    error << "orvalis: " << failure.what() << '\n';
    return kFailed;
  }
}

}  // namespace orvalis
