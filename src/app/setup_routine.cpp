#include "app/setup_routine.h"

#include <algorithm>
#include <chrono>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

constexpr std::chrono::seconds kDialogTick{1};

/// Whether the settings of `subkey` are the same.
bool Same(std::string_view subkey, const Settings& a, const Settings& b, NumberLocale locale) {
  return std::ranges::all_of(SettingKeys(), [&](const SettingKey& key) {
    return key.subkey != subkey || ToText(key, a, locale) == ToText(key, b, locale);
  });
}

}  // namespace

void SetupRoutine::Run() {
  if (open_) {
    parts_.dialog.BringToFront();
    return;
  }
  // Whatever happens below, the poll timer is started again afterwards.
  struct Paused {
    SetupRoutine& routine;
    explicit Paused(SetupRoutine& r) : routine(r) {
      routine.open_ = true;
      routine.parts_.poll_timer.SetEnabled(false);
      routine.parts_.dialog_timer.SetInterval(kDialogTick);
      routine.parts_.dialog_timer.SetEnabled(true);
    }
    Paused(const Paused&) = delete;
    Paused& operator=(const Paused&) = delete;
    ~Paused() {
      routine.parts_.dialog_timer.SetEnabled(false);
      routine.parts_.poll_timer.SetEnabled(true);
      routine.open_ = false;
    }
  };
  const Paused paused(*this);
  SetupForm form = CopyIn();
  shown_ = {form.unit, form.unit_known};
  while (parts_.dialog.Exec(form)) {
    // A unit may be connected while a message is open. The boxes are not that unit's, and are updated when the dialog
    // is shown again.
    const ShownUnit confirmed = shown_;
    if (Accept(form, confirmed)) break;
    shown_ = confirmed;
    form.unit_known = confirmed.known;
  }
  parts_.leftovers.Refresh(parts_.settings);
  if (parts_.window != nullptr) parts_.window->SetAlwaysOnTop(parts_.settings.AlwaysOnTop);
}

void SetupRoutine::FollowUnit() {
  const ShownUnit now{parts_.unit, parts_.unit_known()};
  if (!open_ || now == shown_) return;
  shown_ = now;
  parts_.dialog.ShowUnit(now.options, now.known);
}

SetupForm SetupRoutine::CopyIn() const {
  Settings settings = parts_.settings;
  if (settings.NetworkPort == 0) {  // another way to say that nothing is served, which the dialog does not have
    settings.NetworkEnabled = 0;
    settings.NetworkPort = Settings().NetworkPort;
  }
  if (settings.MqttPort == 0) {
    settings.MqttEnabled = 0;
    settings.MqttPort = Settings().MqttPort;
  }
  SetupForm form;
  for (const SetupField& field : SetupFields()) {
    form.texts.push_back(SetupFieldText(field, settings, parts_.store.locale()));
  }
  for (const SetupFlag& flag : SetupFlags()) form.flags.push_back(flag.Get(settings));
  for (const SetupChoice& choice : SetupChoices()) form.choices.push_back(settings.*choice.member);
  for (const SetupText& text : SetupTexts()) form.plain_texts.push_back(settings.*text.member);
  for (const SetupFile& file : SetupFiles()) form.files.push_back(settings.*file.path);
  form.unit = parts_.unit;
  form.unit_known = parts_.unit_known();
  form.port = parts_.store.Get(*FindSettingKey(kPortKey));
  if (form.port.empty()) form.port = kDefaultPort;
  return form;
}

bool SetupRoutine::ReadBack(SetupForm& form, Settings& settings) const {
  for (std::size_t i = 0; i < SetupFields().size(); ++i) {
    const SetupField& field = SetupFields()[i];
    const SetupReading reading = ReadSetupField(field, form.texts[i], parts_.store.locale());
    if (!reading.message.empty()) parts_.dialog.ShowMessage(reading.message);
    if (!reading.replacement_text.empty()) form.texts[i] = reading.replacement_text;
    if (reading.IsSentinel()) return false;
    StoreSetupField(field, reading.value, settings);
  }
  for (std::size_t i = 0; i < SetupFlags().size(); ++i) SetupFlags()[i].Set(form.flags[i], settings);
  for (std::size_t i = 0; i < SetupChoices().size(); ++i) settings.*SetupChoices()[i].member = form.choices[i];
  for (std::size_t i = 0; i < SetupTexts().size(); ++i) settings.*SetupTexts()[i].member = form.plain_texts[i];
  for (std::size_t i = 0; i < SetupFiles().size(); ++i) settings.*SetupFiles()[i].path = form.files[i];
  return true;
}

bool SetupRoutine::Accept(SetupForm& form, const ShownUnit& shown) {
  try {
    if (!form.port.empty()) parts_.store.WriteText(kPortKey, form.port);
    Settings changed = parts_.settings;
    if (!ReadBack(form, changed)) return false;
    parts_.store.SaveSetupSettings(changed);
    const bool same_network = Same(kNetworkSubkey, parts_.settings, changed, parts_.store.locale());
    const bool same_mqtt = Same(kMqttSubkey, parts_.settings, changed, parts_.store.locale()) &&
                           parts_.settings.NetworkStation == changed.NetworkStation;
    parts_.settings = changed;
    if (!same_network && parts_.network_changed) parts_.network_changed();
    if (!same_mqtt && parts_.mqtt_changed) parts_.mqtt_changed();
  } catch (const RunTimeError& error) {
    parts_.dialog.ShowMessage(error.what());
    return false;
  }
  if (!shown.known) return true;
  // Only what the user changed: a unit connected meanwhile must not be switched off by boxes that were empty before.
  for (const SetupUnitOption& option : SetupUnitOptions()) {
    const bool wanted = form.unit.*option.member;
    if (wanted != shown.options.*option.member) parts_.unit.*option.member = wanted;
  }
  return true;
}

void ImmediateSwitches::SetDemoMode(bool on) {
  Settings changed = parts_.settings;
  changed.DemoMode = on ? 1 : 0;
  Store(changed, {"DemoMode"});
}

void ImmediateSwitches::SetAutoConnect(bool on) {
  Settings changed = parts_.settings;
  changed.AutoConnect = on ? 1 : 0;
  Store(changed, {"AutoConnect"});
  // Demo mode does not open the link on its own.
  if (on && !parts_.link.Connected() && !parts_.demo_mode()) parts_.connector.Connect();
}

void ImmediateSwitches::SetFullLog(bool on, const std::string& folder) {
  SetLog({&Settings::g_lFullLog, &Settings::g_sFullLogPath, "g_lFullLog", "g_sFullLogPath"}, on, folder);
  parts_.logs.CloseFullLog();
  parts_.logs.OpenFullLog(parts_.settings);
}

void ImmediateSwitches::SetOneLineLog(bool on, const std::string& folder) {
  SetLog({&Settings::g_lOneLineLog, &Settings::g_sOneLineLogPath, "g_lOneLineLog", "g_sOneLineLogPath"}, on, folder);
}

void ImmediateSwitches::SetLog(const LogSettings& log, bool on, const std::string& folder) {
  Settings changed = parts_.settings;
  changed.*log.enabled = on ? 1 : 0;
  if (!on) return Store(changed, {log.enabled_key});
  changed.*log.folder = folder;
  Store(changed, {log.enabled_key, log.folder_key});
}

void ImmediateSwitches::Store(const Settings& changed, std::initializer_list<std::string_view> keys) {
  Profile::Batch batch(parts_.store.profile());
  for (const std::string_view key : keys) parts_.store.Write(key, changed);
  batch.Commit();
  parts_.settings = changed;
}

}  // namespace orvalis
