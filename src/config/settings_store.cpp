#include "config/settings_store.h"

#include <array>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

/// The keys that the setup dialog saves, in writing order; one is written twice.
constexpr std::array<std::string_view, 64> kSetupKeys{
    "WindSpeedCloseD",
    "StepTime",
    "WindSpeedWarn",
    "MaxInc",
    "Absolute",
    "Synchronous",
    "Centigrade",
    "Reverse",
    "HalfStep",
    "TPTempHysteresis",
    "Joystick_slopeR",
    "TPTempOffset",
    "Joystick_interceptR",
    "Thermistor_A",
    "Thermistor_B",
    "Thermistor_C",
    "ThermistorR_A",
    "ThermistorR_B",
    "ThermistorR_C",
    "AlwaysOnTop",
    "AdvancedSetup",
    "CanTempComp",
    "CanTemp",
    "CanStepSize",
    "CanHalt",
    "BacklashDir",
    "TempMax",
    "WindsAvgCnt",
    "TempsAvgCount",
    "BacklashComp",
    "TempSteps",
    "WindTimer",
    "RainOnTime",
    "WindMultiplier",
    "PartCloudyDegC",
    "FullCloudyDegC",
    "CloudsThreshold",
    "g_bchkEnableSounds",
    "g_bchkRepeatSounds",
    "g_bchkRainSounds",
    "g_bchkWindSounds",
    "g_bchkLightSounds",
    "g_bchkCloudSounds",
    "g_bchkRelaySounds",
    "g_sRainSounds",
    "g_sWindSounds",
    "g_sLightSounds",
    "g_sCloudSounds",
    "g_sRelaySounds",
    "g_bchkCloudSounds",
    "RainThreshold",
    "WindThreshold",
    "LightThreshold",
    "g_bchkRainApp",
    "g_bchkWindApp",
    "g_bchkLightApp",
    "g_bchkCloudApp",
    "g_sRainApp",
    "g_sWindApp",
    "g_sLightApp",
    "g_sCloudApp",
    "g_bchkRelayApp",
    "g_sRelayApp",
    "g_bchkRepeatApp",
};
/// Those that it saves after them.
constexpr std::array<std::string_view, 16> kSafetyKeys{
    "WindUnit",      "SafeHoldSeconds", "VerdictRain",     "VerdictWind",   "VerdictClouds", "VerdictLight",
    "DemoCanBeSafe", "KeepVerdict",     "VerdictLog",      "SafetyAlerts",  "UnsafeSound",   "UnsafeApp",
    "SafeSound",     "SafeApp",         "NoReadingsSound", "NoReadingsApp",
};
/// And the network's.
constexpr std::array<std::string_view, 7> kNetworkKeys{
    "Network/Enabled", "Network/Address", "Network/Port",        "Network/Discovery",
    "Network/Station", "Network/Names",   "Network/AllowOrigin",
};
constexpr std::array<std::string_view, 10> kMqttKeys{
    "Mqtt/Enabled", "Mqtt/Host",   "Mqtt/Port",   "Mqtt/User",          "Mqtt/Password",
    "Mqtt/Tls",     "Mqtt/CaFile", "Mqtt/Prefix", "Mqtt/HomeAssistant", "Mqtt/AllowPlainPassword",
};

const SettingKey& Require(std::string_view name) {
  const SettingKey* key = FindSettingKey(name);
  if (key == nullptr) {
    throw RunTimeError(RunTimeError::kSubscriptOutOfRange, "there is no setting \"" + std::string(name) + "\"");
  }
  return *key;
}

}  // namespace

void SettingsStore::Register() {
  profile_.SetDeviceType(kDeviceType);
  profile_.Register(kDriverId, kDriverDescription);
}

bool SettingsStore::HasCurrentLayout() const { return Get(Require(kLayoutKey)) == kLayoutVersion; }

void SettingsStore::EnsureLayout() {
  kept_safe_ = profile_.KeepSafe(RulesForSettings(locale_));
  const std::string layout = Get(Require(kLayoutKey));
  if (layout == kLayoutVersion) return;
  // The stamp is written first and must not be found without its keys after a crash: all or nothing.
  Profile::Batch batch(profile_);
  for (const SettingKey& key : SettingKeys()) {
    if (!key.default_text) continue;
    profile_.WriteValue(kDriverId, key.name, DefaultText(key, program_folder_, locale_), key.subkey);
  }
  const bool is_new = layout.empty() && LossNotice().empty();
  if (is_new && offers_assistant_) WriteText(kAssistantKey, "1");
  batch.Commit();
}

void SettingsStore::CheckIntact() const {
  const std::string fault = profile_.Fault(RulesForSettings(locale_));
  if (fault.empty()) return;
  throw RunTimeError(
      RunTimeError::kPathFileAccess,
      profile_.Location() + " " + fault + "; the next start sets it aside and restores the copy beside it");
}

std::string SettingsStore::LossNotice() const {
  return kept_safe_ ? profile_.GetValue(kDriverId, kLossNoticeKey, "") : std::string();
}

void SettingsStore::AcknowledgeLoss() { profile_.WriteValue(kDriverId, kLossNoticeKey, "", ""); }

Settings SettingsStore::LoadSettings() {
  EnsureLayout();
  Settings settings;
  for (const SettingKey& key : SettingKeys()) {
    if (key.name == kLayoutKey || key.name == "Left" || key.name == "Top") continue;
    try {
      LoadKey(key, settings);
    } catch (const RunTimeError&) {
      if (!key.when_unreadable) throw;
      SetFromText(key, *key.when_unreadable, locale_, settings);
      if (key.default_text) Write(PathOf(key), settings);
    }
  }
  return settings;
}

std::string SettingsStore::Get(const SettingKey& key) const {
  return profile_.GetValue(kDriverId, key.name, key.subkey);
}

void SettingsStore::Load(std::string_view name, Settings& settings) const { LoadKey(Require(name), settings); }

void SettingsStore::LoadKey(const SettingKey& key, Settings& settings) const {
  std::string text = Get(key);
  if (!key.default_text && text.empty()) text = key.when_absent;
  try {
    SetFromText(key, text, locale_, settings);
  } catch (const RunTimeError& error) {
    throw RunTimeError(error.number(), Message::Of("%1: the setting \"%2\" cannot be used: %3; set it right with: %4")
                                           .With(profile_.Location(), key.name, error.message(),
                                                 "orvalis profile set \"" + std::string(key.name) + "\" VALUE"));
  }
}

void SettingsStore::Write(std::string_view name, const Settings& settings) {
  WriteText(name, ToText(Require(name), settings, locale_));
}

void SettingsStore::WriteText(std::string_view name, std::string_view text) {
  const SettingKey& key = Require(name);
  profile_.WriteValue(kDriverId, key.name, text, key.subkey);
}

void SettingsStore::SaveSetupSettings(const Settings& settings) {
  Profile::Batch batch(profile_);
  for (const std::string_view name : kSetupKeys) Write(name, settings);
  for (const std::string_view name : kSafetyKeys) Write(name, settings);
  for (const std::string_view name : kNetworkKeys) Write(name, settings);
  for (const std::string_view name : kMqttKeys) Write(name, settings);
  batch.Commit();
}

}  // namespace orvalis
