#include "config/settings_table.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

constexpr std::string_view kRoot;
constexpr std::string_view kCapabilities = "Capabilities";
constexpr std::string_view kNetwork = kNetworkSubkey;
constexpr std::string_view kMqtt = kMqttSubkey;
constexpr std::nullopt_t kNoDefault = std::nullopt;
constexpr std::monostate kStoreOnly;

// clang-format off
constexpr std::array<SettingKey, 135> kKeys{{
    {"RegVer", kRoot, KeyType::kText, kLayoutVersion, kStoreOnly},
    {"Absolute", kRoot, KeyType::kBoolean, "True", &Settings::Absolute},
    {"Synchronous", kRoot, KeyType::kBoolean, "False", &Settings::Synchronous},
    {"Centigrade", kRoot, KeyType::kBoolean, "False", &Settings::Centigrade},
    {"Reverse", kRoot, KeyType::kBoolean, "False", &Settings::Reverse},
    {"HalfStep", kRoot, KeyType::kBoolean, "False", &Settings::HalfStep},
    {"WindSpeedCloseD", kRoot, KeyType::kReal, "12.0", &Settings::WindSpeedCloseD},
    {"MaxCloudTemp", kRoot, KeyType::kInteger, "5", &Settings::MaxCloudTemp},
    {"StepTime", kRoot, KeyType::kReal, "0.278", &Settings::StepTime},
    {"Position", kRoot, KeyType::kInteger, "500", &Settings::Position},
    {"WindSpeedWarn", kRoot, KeyType::kReal, "8.0", &Settings::WindSpeedWarn},
    {"Temp", kRoot, KeyType::kReal, "5.0", &Settings::Temp},
    {"MaxInc", kRoot, KeyType::kReal, "1", &Settings::MaxInc},
    {"AlwaysOnTop", kRoot, KeyType::kBoolean, "True", &Settings::AlwaysOnTop},
    {"Left", kRoot, KeyType::kInteger, "100", &Settings::Left},
    {"Top", kRoot, KeyType::kInteger, "100", &Settings::Top},
    {"AdvancedSetup", kRoot, KeyType::kBoolean, "False", &Settings::AdvancedSetup},
    {"CanTempComp", kCapabilities, KeyType::kBoolean, "True", &Settings::CanTempComp},
    {"CanTemp", kCapabilities, KeyType::kBoolean, "True", &Settings::CanTemp},
    {"CanStepSize", kCapabilities, KeyType::kBoolean, "True", &Settings::CanStepSize},
    {"CanHalt", kCapabilities, KeyType::kBoolean, "True", &Settings::CanHalt},
    {"TempMax", kCapabilities, KeyType::kReal, "5.0", &Settings::TempMax},
    {"WindsAvgCnt", kCapabilities, KeyType::kInteger, "1", &Settings::WindsAvgCnt},
    {"TempsAvgCount", kCapabilities, KeyType::kInteger, "1", &Settings::TempsAvgCount},
    {"BacklashComp", kCapabilities, KeyType::kInteger, "5", &Settings::BacklashComp},
    {"BacklashDir", kCapabilities, KeyType::kBoolean, "True", &Settings::BacklashDir},
    {"TempSteps", kCapabilities, KeyType::kInteger, "10", &Settings::TempSteps},
    {"TPTempHysteresis", kRoot, KeyType::kReal, "2.0", &Settings::TPTempHysteresis},
    {"TPTempOffset", kRoot, KeyType::kReal, "8.0", &Settings::TPTempOffset},
    {"Thermistor_A", kRoot, KeyType::kReal, "-0.00045015253", &Settings::Thermistor_A},
    {"Thermistor_B", kRoot, KeyType::kReal, "0.000472700220", &Settings::Thermistor_B},
    {"Thermistor_C", kRoot, KeyType::kReal, "-0.000000713329", &Settings::Thermistor_C},
    {"Joystick_slopeR", kRoot, KeyType::kReal, "707", &Settings::Joystick_slopeR},
    {"Joystick_interceptR", kRoot, KeyType::kReal, "6.16", &Settings::Joystick_interceptR},
    {"ThermistorR_A", kRoot, KeyType::kReal, "0.002365398200", &Settings::ThermistorR_A},
    {"ThermistorR_B", kRoot, KeyType::kReal, "0.000034852743", &Settings::ThermistorR_B},
    {"ThermistorR_C", kRoot, KeyType::kReal, "0.000000827387", &Settings::ThermistorR_C},
    {"RainThreshold", kRoot, KeyType::kInteger, "350", &Settings::RainThreshold},
    {"WindThreshold", kRoot, KeyType::kInteger, "36", &Settings::WindThreshold},
    {"LightThreshold", kRoot, KeyType::kInteger, "950", &Settings::LightThreshold},
    {"WindTimer", kRoot, KeyType::kInteger, "122", &Settings::WindTimer},
    {"WindMultiplier", kRoot, KeyType::kInteger, "9", &Settings::WindMultiplier},
    {"PartCloudyDegC", kRoot, KeyType::kInteger, "22", &Settings::PartCloudyDegC},
    {"FullCloudyDegC", kRoot, KeyType::kInteger, "19", &Settings::FullCloudyDegC},
    {"CloudsThreshold", kRoot, KeyType::kReal, "-5", &Settings::CloudsThreshold},
    {"DemoMode", kRoot, KeyType::kInteger, "0", &Settings::DemoMode},
    {"g_bchkEnableSounds", kRoot, KeyType::kInteger, "0", &Settings::g_bchkEnableSounds},
    {"g_bchkRepeatSounds", kRoot, KeyType::kInteger, "0", &Settings::g_bchkRepeatSounds},
    {"g_bchkRainSounds", kRoot, KeyType::kInteger, "0", &Settings::g_bchkRainSounds},
    {"g_bchkWindSounds", kRoot, KeyType::kInteger, "0", &Settings::g_bchkWindSounds},
    {"g_bchkLightSounds", kRoot, KeyType::kInteger, "0", &Settings::g_bchkLightSounds},
    {"g_bchkCloudSounds", kRoot, KeyType::kInteger, "0", &Settings::g_bchkCloudSounds},
    {"g_bchkRelaySounds", kRoot, KeyType::kInteger, "0", &Settings::g_bchkRelaySounds},
    {"g_sRainSounds", kRoot, KeyType::kText, "", &Settings::g_sRainSounds},
    {"g_sWindSounds", kRoot, KeyType::kText, "", &Settings::g_sWindSounds},
    {"g_sLightSounds", kRoot, KeyType::kText, "", &Settings::g_sLightSounds},
    {"g_sCloudSounds", kRoot, KeyType::kText, "", &Settings::g_sCloudSounds},
    {"g_sRelaySounds", kRoot, KeyType::kText, "", &Settings::g_sRelaySounds},
    {"RainOnTime", kRoot, KeyType::kInteger, "60", &Settings::RainOnTime},
    {"g_bchkRainApp", kRoot, KeyType::kInteger, "0", &Settings::g_bchkRainApp},
    {"g_bchkWindApp", kRoot, KeyType::kInteger, "0", &Settings::g_bchkWindApp},
    {"g_bchkLightApp", kRoot, KeyType::kInteger, "0", &Settings::g_bchkLightApp},
    {"g_bchkCloudApp", kRoot, KeyType::kInteger, "0", &Settings::g_bchkCloudApp},
    {"g_bchkRelayApp", kRoot, KeyType::kInteger, "0", &Settings::g_bchkRelayApp},
    {"g_bchkRepeatApp", kRoot, KeyType::kInteger, "0", &Settings::g_bchkRepeatApp},
    {"g_sRainApp", kRoot, KeyType::kText, "", &Settings::g_sRainApp},
    {"g_sWindApp", kRoot, KeyType::kText, "", &Settings::g_sWindApp},
    {"g_sLightApp", kRoot, KeyType::kText, "", &Settings::g_sLightApp},
    {"g_sCloudApp", kRoot, KeyType::kText, "", &Settings::g_sCloudApp},
    {"g_sRelayApp", kRoot, KeyType::kText, "", &Settings::g_sRelayApp},
    {"g_sPWS_name", kRoot, KeyType::kText, "Your Wunderground Site ID", &Settings::g_sPWS_name},
    {"g_sWEBcam_name", kRoot, KeyType::kText, "Your Wunderground Webcam name", &Settings::g_sWEBcam_name},
    {"g_sPWS_password", kRoot, KeyType::kText, "Your Wunderground Password", &Settings::g_sPWS_password},
    {"g_sPWS_site", kRoot, KeyType::kText, "http://rtupdate.wunderground.com/weatherstation/updateweatherstation.php", &Settings::g_sPWS_site},
    {"g_sWEBcam_site", kRoot, KeyType::kText, "ftp://webcam.wunderground.com", &Settings::g_sWEBcam_site},
    {"g_bAllow_PWS", kRoot, KeyType::kInteger, "0", &Settings::g_bAllow_PWS},
    {"g_bAllow_WEB", kRoot, KeyType::kInteger, "0", &Settings::g_bAllow_WEB},
    {"g_lFullLog", kRoot, KeyType::kInteger, "0", &Settings::g_lFullLog},
    {"g_lOneLineLog", kRoot, KeyType::kInteger, "0", &Settings::g_lOneLineLog},
    {"g_sFullLogPath", kRoot, KeyType::kText, kProgramFolder, &Settings::g_sFullLogPath},
    {"g_sOneLineLogPath", kRoot, KeyType::kText, kProgramFolder, &Settings::g_sOneLineLogPath},
    {"g_lPWSUpdate_interval_index", kRoot, KeyType::kInteger, "0", &Settings::g_lPWSUpdate_interval_index},
    {"g_lWEBUpdate_interval_index", kRoot, KeyType::kInteger, "3", &Settings::g_lWEBUpdate_interval_index},
    {"AutoConnect", kRoot, KeyType::kInteger, "0", &Settings::AutoConnect, {}, "0"},
    {"COM Port", kRoot, KeyType::kText, kNoDefault, kStoreOnly, kDefaultPort},
    {"g_lPWSUpdate_interval", kRoot, KeyType::kText, kNoDefault, kStoreOnly},
    {"g_lWEBUpdate_interval", kRoot, KeyType::kText, kNoDefault, kStoreOnly},
    {"g_sPWSUpdate_interval_index", kRoot, KeyType::kText, kNoDefault, kStoreOnly},
    {"g_sPWSUpdate_interval", kRoot, KeyType::kText, kNoDefault, kStoreOnly},
    {"g_sWEBUpdate_interval_index", kRoot, KeyType::kText, kNoDefault, kStoreOnly},
    {"g_sWEBUpdate_interval", kRoot, KeyType::kText, kNoDefault, kStoreOnly},
    {"NightTheme", kRoot, KeyType::kInteger, kNoDefault, &Settings::NightTheme, "0"},
    {"TrayMessages", kRoot, KeyType::kInteger, kNoDefault, &Settings::TrayMessages, "1", "1", 0, 1},
    {"Latitude", kRoot, KeyType::kReal, kNoDefault, &Settings::Latitude, {}, "", -90, 90},
    {"Longitude", kRoot, KeyType::kReal, kNoDefault, &Settings::Longitude, {}, "", -180, 180},
    {"WindUnit", kRoot, KeyType::kInteger, kNoDefault, &Settings::WindUnit, "0", "0", 0, 3},
    {kAssistantKey, kRoot, KeyType::kInteger, kNoDefault, &Settings::Assistant, "0", "0", 0, 1},
    {"KeepVerdict", kRoot, KeyType::kInteger, kNoDefault, &Settings::KeepVerdict, "0", "0", 0, 1},
    {"WebcamBuiltIn", kRoot, KeyType::kInteger, kNoDefault, &Settings::WebcamBuiltIn, "0"},
    // What is unreadable here must not open a roof.
    {"SafeHoldSeconds", kRoot, KeyType::kInteger, kNoDefault, &Settings::SafeHoldSeconds, "10", "60", 0, 3600},
    {"VerdictRain", kRoot, KeyType::kInteger, kNoDefault, &Settings::VerdictRain, "1", "1", 0, 1},
    {"VerdictWind", kRoot, KeyType::kInteger, kNoDefault, &Settings::VerdictWind, "0", "1", 0, 1},
    {"VerdictClouds", kRoot, KeyType::kInteger, kNoDefault, &Settings::VerdictClouds, "0", "1", 0, 1},
    {"VerdictLight", kRoot, KeyType::kInteger, kNoDefault, &Settings::VerdictLight, "0", "1", 0, 1},
    {"DemoCanBeSafe", kRoot, KeyType::kInteger, kNoDefault, &Settings::DemoCanBeSafe, "0", "0", 0, 1},
    {"ForceUnsafe", kRoot, KeyType::kInteger, kNoDefault, &Settings::ForceUnsafe, "0", "1", 0, 1},
    {"VerdictLog", kRoot, KeyType::kInteger, kNoDefault, &Settings::VerdictLog, "1", "1", 0, 1},
    {"SafetyAlerts", kRoot, KeyType::kInteger, kNoDefault, &Settings::SafetyAlerts, "1", "1", 0, 1},
    {"UnsafeSound", kRoot, KeyType::kText, kNoDefault, &Settings::UnsafeSound},
    {"UnsafeApp", kRoot, KeyType::kText, kNoDefault, &Settings::UnsafeApp},
    {"SafeSound", kRoot, KeyType::kText, kNoDefault, &Settings::SafeSound},
    {"SafeApp", kRoot, KeyType::kText, kNoDefault, &Settings::SafeApp},
    {"NoReadingsSound", kRoot, KeyType::kText, kNoDefault, &Settings::NoReadingsSound},
    {"NoReadingsApp", kRoot, KeyType::kText, kNoDefault, &Settings::NoReadingsApp},
    {"Enabled", kNetwork, KeyType::kInteger, kNoDefault, &Settings::NetworkEnabled, "1", "0"},
    {"Address", kNetwork, KeyType::kText, kNoDefault, &Settings::NetworkAddress, "127.0.0.1"},
    {"Port", kNetwork, KeyType::kInteger, kNoDefault, &Settings::NetworkPort, "11111", "0", 0, 65535},
    {"Discovery", kNetwork, KeyType::kInteger, kNoDefault, &Settings::NetworkDiscovery, "1", "0"},
    {"Station", kNetwork, KeyType::kText, kNoDefault, &Settings::NetworkStation},
    {"Names", kNetwork, KeyType::kText, kNoDefault, &Settings::NetworkNames},
    {"AllowOrigin", kNetwork, KeyType::kText, kNoDefault, &Settings::NetworkAllowOrigin},
    {"Uuid", kNetwork, KeyType::kText, kNoDefault, kStoreOnly},
    {"ObservingConditionsUuid", kNetwork, KeyType::kText, kNoDefault, kStoreOnly},
    {"SafetyMonitorUuid", kNetwork, KeyType::kText, kNoDefault, kStoreOnly},
    {"Enabled", kMqtt, KeyType::kInteger, kNoDefault, &Settings::MqttEnabled, "0", "0", 0, 1},
    {"Host", kMqtt, KeyType::kText, kNoDefault, &Settings::MqttHost},
    {"Port", kMqtt, KeyType::kInteger, kNoDefault, &Settings::MqttPort, "1883", "0", 0, 65535},
    {"User", kMqtt, KeyType::kText, kNoDefault, &Settings::MqttUser},
    {"Password", kMqtt, KeyType::kText, kNoDefault, &Settings::MqttPassword},
    // What is unreadable here must not send a password in the clear.
    {"Tls", kMqtt, KeyType::kInteger, kNoDefault, &Settings::MqttTls, "0", "1", 0, 1},
    {"CaFile", kMqtt, KeyType::kText, kNoDefault, &Settings::MqttCaFile},
    {"Prefix", kMqtt, KeyType::kText, kNoDefault, &Settings::MqttPrefix, "orvalis"},
    {"HomeAssistant", kMqtt, KeyType::kInteger, kNoDefault, &Settings::MqttHomeAssistant, "1", "0", 0, 1},
    {"AllowPlainPassword", kMqtt, KeyType::kInteger, kNoDefault, &Settings::MqttAllowPlainPassword, "0", "0", 0, 1},
    {"Announced", kMqtt, KeyType::kText, kNoDefault, kStoreOnly},
}};
// clang-format on

/// `number`, if it is within the limits of `key`.
template <typename Number>
Number InRange(Number number, const SettingKey& key) {
  if (number >= key.lowest && number <= key.highest) return number;
  throw RunTimeError(RunTimeError::kInvalidCall,
                     "it must be " + std::to_string(key.lowest) + " to " + std::to_string(key.highest));
}

}  // namespace

std::string_view Name(KeyType type) {
  switch (type) {
    case KeyType::kBoolean:
      return "Boolean";
    case KeyType::kInteger:
      return "Integer";
    case KeyType::kReal:
      return "Real";
    case KeyType::kText:
      return "Text";
  }
  return "";
}

std::span<const SettingKey> SettingKeys() { return kKeys; }

const SettingKey* FindSettingKey(std::string_view path) {
  const auto is_called = [&](const SettingKey& key) { return key.name == path || PathOf(key) == path; };
  const auto found = std::ranges::find_if(kKeys, is_called);
  if (found == kKeys.end()) return nullptr;
  const bool ambiguous =
      found->name == path && !found->subkey.empty() && std::any_of(std::next(found), kKeys.end(), is_called);
  return ambiguous ? nullptr : &*found;
}

std::string PathOf(const SettingKey& key) {
  return key.subkey.empty() ? std::string(key.name) : std::string(key.subkey) + "/" + std::string(key.name);
}

bool IsSecret(const SettingKey& key) { return key.name == kPasswordKey || PathOf(key) == kMqttPasswordKey; }

std::string DefaultText(const SettingKey& key, std::string_view program_folder, NumberLocale locale) {
  if (!key.default_text) return "";
  if (*key.default_text == kProgramFolder) return std::string(program_folder);
  std::string text(*key.default_text);
  if (key.type == KeyType::kReal) std::replace(text.begin(), text.end(), '.', locale.decimal_separator);
  return text;
}

void SetFromText(const SettingKey& key, std::string_view text, NumberLocale locale, Settings& settings) {
  struct Setter {
    const SettingKey& key;
    std::string_view text;
    NumberLocale locale;
    Settings& settings;
    void operator()(std::monostate) const {}
    void operator()(bool Settings::*member) const { settings.*member = TextToBoolean(text, locale); }
    void operator()(std::int32_t Settings::*member) const {
      settings.*member = InRange(TextToInteger(text, locale), key);
    }
    void operator()(double Settings::*member) const { settings.*member = TextToReal(text, locale); }
    void operator()(std::string Settings::*member) const { settings.*member = text; }
    void operator()(std::optional<double> Settings::*member) const {
      (settings.*member).reset();
      if (!text.empty()) settings.*member = InRange(TextToReal(text, locale), key);
    }
  };
  std::visit(Setter{key, text, locale, settings}, key.member);
}

std::string ToText(const SettingKey& key, const Settings& settings, NumberLocale locale) {
  struct Getter {
    const Settings& settings;
    NumberLocale locale;
    std::string operator()(std::monostate) const { return ""; }
    std::string operator()(bool Settings::*member) const { return std::string(BooleanToText(settings.*member)); }
    std::string operator()(std::int32_t Settings::*member) const { return std::to_string(settings.*member); }
    std::string operator()(double Settings::*member) const { return RealToText(settings.*member, locale); }
    std::string operator()(std::string Settings::*member) const { return settings.*member; }
    std::string operator()(std::optional<double> Settings::*member) const {
      return settings.*member ? RealToText(*(settings.*member), locale) : "";
    }
  };
  return std::visit(Getter{settings, locale}, key.member);
}

void CheckText(const SettingKey& key, std::string_view text, NumberLocale locale) {
  Settings scratch;
  SetFromText(key, text, locale, scratch);
}

}  // namespace orvalis
