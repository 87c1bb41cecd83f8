#include "app/setup_fields.h"

#include <array>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

using Range = SetupField::Range;
constexpr std::monostate kNone;

// clang-format off
constexpr std::array<SetupField, 32> kFields{{
    {"Lpt_addr", kNone, false, Range::kAny, "",
     "invalid input in LPT address", -9999.0, ""},
    {"WindSpeedCloseD", &Settings::WindSpeedCloseD, false, Range::kNotBelowZero, "invalid input in WindSpeedCloseD, must be >= 0",
     "invalid input in WindSpeedCloseD, must be >= 0", 0.0, ""},
    {"WindSpeedWarn", &Settings::WindSpeedWarn, false, Range::kNotBelowZero, "invalid input in WindSpeedWarn, must be >= 0",
     "invalid input in WindSpeedWarn, must be >=0 ", 9999.0, ""},
    {"StepTime", &Settings::StepTime, false, Range::kAboveZero, "invalid input in Step Time, must be > 0",
     "invalid input in Step Time", -9999.0, ""},
    {"MaxInc", &Settings::MaxInc, false, Range::kAboveZero, "invalid input in Max Increment, must be > 0",
     "invalid input in Max Increment", -9999.0, ""},
    {"TempCur", &Settings::Temp, false, Range::kAny, "",
     "invalid input in Current Temp", 9999.0, ""},
    {"TempMax", &Settings::TempMax, false, Range::kAboveZero, "invalid input in Delta T, must be > 0",
     "invalid input in Delta T", 9999.0, ""},
    {"TempAvgCnt", &Settings::TempsAvgCount, true, Range::k1To300, "invalid input in Temp Avg Count, must be 1 through 300",
     "invalid input in Temp Avg Count", 9999, ""},
    {"BacklashComp", &Settings::BacklashComp, true, Range::kAny, "",
     "invalid input in Backlash steps", 9999, ""},
    {"TempSteps", &Settings::TempSteps, true, Range::kAboveZero, "invalid input in Steps/DeltaT, must be > 0",
     "invalid input in Steps/DeltaT", -9999, ""},
    {"TPTempHysteresis", &Settings::TPTempHysteresis, false, Range::kAny, "",
     "invalid input in Temp hysteresis value, 9.9 to 0.1", -9999.0, ""},
    {"RainThreshold", &Settings::RainThreshold, true, Range::kAny, "",
     "invalid input in RainThreshold, 1 to 1000, defaulted to 400", 400, "400"},
    {"WindThreshold", &Settings::WindThreshold, true, Range::kAny, "",
     "invalid input in WindThreshold, 1 to 1000, defaulted to 300", 300, ""},
    {"LightThreshold", &Settings::LightThreshold, true, Range::kAny, "",
     "invalid input in LightThreshold, 1 to 1000, defaulted to 950", 300, ""},
    {"WindTimerL", &Settings::WindTimer, true, Range::kAny, "",
     "invalid input in LightThreshold, 1 to 1000, defaulted to 122", 122, ""},
    {"RainOnTimeL", &Settings::RainOnTime, true, Range::kAny, "",
     "invalid input in LightThreshold, 1 to 1000, defaulted to 122", 60, ""},
    {"PartCloudyDegCL", &Settings::PartCloudyDegC, true, Range::kAny, "",
     "invalid input in PartCloudyDegC, 1 to 40, defaulted to 22", 0, "22"},
    {"FullCloudyDegCL", &Settings::FullCloudyDegC, true, Range::kAny, "",
     "invalid input in FullCloudyDegC, 1 to 40, defaulted to 19", 0, "19"},
    {"CloudThreshCL", &Settings::CloudsThreshold, true, Range::kAny, "",
     "invalid input in CloudThreshC, defaulted to -5.0", -5, ""},
    {"WindMultiplierL", &Settings::WindMultiplier, true, Range::kAny, "",
     "invalid input in WindMultiplier, 1 to 9, defaulted to 3", 3, ""},
    {"TPTempOffset", &Settings::TPTempOffset, false, Range::kAny, "",
     "invalid input in Joystick Intercept", 9999.0, ""},
    {"Thermistor_A", &Settings::Thermistor_A, false, Range::kAny, "",
     "invalid input in Steinhart A value", 9999.0, ""},
    {"Thermistor_B", &Settings::Thermistor_B, false, Range::kAny, "",
     "invalid input in Steinhart B value", 9999.0, ""},
    {"Thermistor_C", &Settings::Thermistor_C, false, Range::kAny, "",
     "invalid input in Steinhart C value", 9999.0, ""},
    {"Joystick_slopeR", &Settings::Joystick_slopeR, false, Range::kAny, "",
     "invalid input in Joystick m2 value", 9999.0, ""},
    {"Joystick_interceptR", &Settings::Joystick_interceptR, false, Range::kAny, "",
     "invalid input in Joystick Intercept", 9999.0, ""},
    {"ThermistorR_A", &Settings::ThermistorR_A, false, Range::kAny, "",
     "invalid input in Steinhart A2 value", 9999.0, ""},
    {"ThermistorR_B", &Settings::ThermistorR_B, false, Range::kAny, "",
     "invalid input in Steinhart B2 value", 9999.0, ""},
    {"ThermistorR_C", &Settings::ThermistorR_C, false, Range::kAny, "",
     "invalid input in Steinhart C2 value", 9999.0, ""},
    {"SafeHoldSeconds", &Settings::SafeHoldSeconds, true, Range::k0To3600, "invalid input in Hold before safe, must be 0 through 3600",
     "invalid input in Hold before safe", -9999, ""},
    {"NetworkPort", &Settings::NetworkPort, true, Range::k1To65535, "invalid input in Port, must be 1 through 65535",
     "invalid input in Port", -9999, ""},
    {"MqttPort", &Settings::MqttPort, true, Range::k1To65535, "invalid input in Broker port, must be 1 through 65535",
     "invalid input in Broker port", -9999, ""},
}};
// clang-format on

constexpr std::array<SetupFlag, 39> kFlags{{
    {"Absolute", &Settings::Absolute},
    {"chkSynchronous", &Settings::Synchronous},
    {"chkCentigrade", &Settings::Centigrade},
    {"chkReverse", &Settings::Reverse},
    {"chkHalfStep", &Settings::HalfStep},
    {"chkAlwaysTop", &Settings::AlwaysOnTop},
    {"AdvancedMode", &Settings::AdvancedSetup},
    {"chkCanTempComp", &Settings::CanTempComp},
    {"chkCanTemp", &Settings::CanTemp},
    {"chkCanStepSize", &Settings::CanStepSize},
    {"chkCanHalt", &Settings::CanHalt},
    {"chkBacklashDir", &Settings::BacklashDir},
    {"chkEnableSounds", &Settings::g_bchkEnableSounds},
    {"chkSafetyAlerts", &Settings::SafetyAlerts},
    {"chkRepeatSounds", &Settings::g_bchkRepeatSounds},
    {"chkRepeatApp", &Settings::g_bchkRepeatApp},
    {"chkRainSounds", &Settings::g_bchkRainSounds},
    {"chkWindSounds", &Settings::g_bchkWindSounds},
    {"chkLightSounds", &Settings::g_bchkLightSounds},
    {"chkCloudSounds", &Settings::g_bchkCloudSounds},
    {"chkRelaySounds", &Settings::g_bchkRelaySounds},
    {"chkRainApp", &Settings::g_bchkRainApp},
    {"chkWindApp", &Settings::g_bchkWindApp},
    {"chkLightApp", &Settings::g_bchkLightApp},
    {"chkCloudApp", &Settings::g_bchkCloudApp},
    {"chkRelayApp", &Settings::g_bchkRelayApp},
    {"chkVerdictRain", &Settings::VerdictRain},
    {"chkVerdictWind", &Settings::VerdictWind},
    {"chkVerdictClouds", &Settings::VerdictClouds},
    {"chkVerdictLight", &Settings::VerdictLight},
    {"chkDemoCanBeSafe", &Settings::DemoCanBeSafe},
    {"chkKeepVerdict", &Settings::KeepVerdict},
    {"chkVerdictLog", &Settings::VerdictLog},
    {"chkNetworkEnabled", &Settings::NetworkEnabled},
    {"chkNetworkDiscovery", &Settings::NetworkDiscovery},
    {"chkMqttEnabled", &Settings::MqttEnabled},
    {"chkMqttTls", &Settings::MqttTls},
    {"chkMqttHomeAssistant", &Settings::MqttHomeAssistant},
    {"chkMqttAllowPlainPassword", &Settings::MqttAllowPlainPassword},
}};

constexpr std::array<SetupChoice, 1> kChoices{{{"WindUnit", &Settings::WindUnit}}};

constexpr std::array<SetupText, 9> kTexts{{
    {"NetworkAddress", &Settings::NetworkAddress},
    {"NetworkStation", &Settings::NetworkStation},
    {"NetworkNames", &Settings::NetworkNames},
    {"NetworkAllowOrigin", &Settings::NetworkAllowOrigin},
    {"MqttHost", &Settings::MqttHost},
    {"MqttUser", &Settings::MqttUser},
    {"MqttPassword", &Settings::MqttPassword},
    {"MqttCaFile", &Settings::MqttCaFile},
    {"MqttPrefix", &Settings::MqttPrefix},
}};

constexpr std::array<SetupFile, 16> kFiles{{
    {"RainSounds", "chkRainSounds", true, &Settings::g_sRainSounds, "rain"},
    {"WindSounds", "chkWindSounds", true, &Settings::g_sWindSounds, "wind"},
    {"LightSounds", "chkLightSounds", true, &Settings::g_sLightSounds, "light"},
    {"CloudSounds", "chkCloudSounds", true, &Settings::g_sCloudSounds, "cloud"},
    {"RelaySounds", "chkRelaySounds", true, &Settings::g_sRelaySounds, "relay"},
    {"RainApp", "chkRainApp", false, &Settings::g_sRainApp, "rain"},
    {"WindApp", "chkWindApp", false, &Settings::g_sWindApp, "wind"},
    {"LightApp", "chkLightApp", false, &Settings::g_sLightApp, "light"},
    {"CloudApp", "chkCloudApp", false, &Settings::g_sCloudApp, "cloud"},
    {"RelayApp", "chkRelayApp", false, &Settings::g_sRelayApp, "relay"},
    {"UnsafeSound", "chkUnsafeSound", true, &Settings::UnsafeSound, "unsafe", true},
    {"SafeSound", "chkSafeSound", true, &Settings::SafeSound, "safe", true},
    {"NoReadingsSound", "chkNoReadingsSound", true, &Settings::NoReadingsSound, "no_readings", true},
    {"UnsafeApp", "chkUnsafeApp", false, &Settings::UnsafeApp, "unsafe", true},
    {"SafeApp", "chkSafeApp", false, &Settings::SafeApp, "safe", true},
    {"NoReadingsApp", "chkNoReadingsApp", false, &Settings::NoReadingsApp, "no_readings", true},
}};

constexpr std::array<SetupUnitOption, 8> kUnitOptions{{
    {"AllowHeater", &UnitOptions::allow_heater},
    {"ForceHeater", &UnitOptions::force_heater},
    {"AllowRelay", &UnitOptions::allow_relay},
    {"ForceRelay", &UnitOptions::force_relay},
    {"AllowRain", &UnitOptions::allow_rain},
    {"AllowClouds", &UnitOptions::allow_clouds},
    {"AllowLight", &UnitOptions::allow_light},
    {"AllowWind", &UnitOptions::allow_wind},
}};

bool InRange(Range range, double value) {
  switch (range) {
    case Range::kAny:
      return true;
    case Range::kNotBelowZero:
      return value >= 0;
    case Range::kAboveZero:
      return value > 0;
    case Range::k1To300:
      return value >= 1 && value <= 300;
    case Range::k0To3600:
      return value >= 0 && value <= 3600;
    case Range::k1To65535:
      return value >= 1 && value <= 65535;
  }
  return true;
}

}  // namespace

std::span<const SetupField> SetupFields() { return kFields; }
std::span<const SetupFlag> SetupFlags() { return kFlags; }
std::span<const SetupChoice> SetupChoices() { return kChoices; }
std::span<const SetupText> SetupTexts() { return kTexts; }
std::span<const SetupFile> SetupFiles() { return kFiles; }
std::span<const SetupUnitOption> SetupUnitOptions() { return kUnitOptions; }

Message RangeText(Range range) {
  switch (range) {
    case Range::kAny:
      return {};
    case Range::kNotBelowZero:
      return Message::Of("must be 0 or more");
    case Range::kAboveZero:
      return Message::Of("must be above 0");
    case Range::k1To300:
      return Message::Of("must be 1 through 300");
    case Range::k0To3600:
      return Message::Of("must be 0 through 3600");
    case Range::k1To65535:
      return Message::Of("must be 1 through 65535");
  }
  return {};
}

SetupReading ReadSetupField(const SetupField& field, std::string_view text, NumberLocale locale) {
  const auto bad = [&](std::string_view message) {
    return SetupReading{field.replacement, message, field.replacement_text};
  };
  double value = 0;
  try {
    value = field.whole_number ? TextToInteger(text, locale) : TextToReal(text, locale);
  } catch (const RunTimeError&) {
    return bad(field.conversion_message);
  }
  if (!InRange(field.range, value)) return bad(field.range_message);
  return {.value = value, .message = {}, .replacement_text = {}};
}

std::string SetupFieldText(const SetupField& field, const Settings& settings, NumberLocale locale) {
  if (const auto* whole = std::get_if<std::int32_t Settings::*>(&field.member)) {
    return std::to_string(settings.**whole);
  }
  if (const auto* real = std::get_if<double Settings::*>(&field.member)) return RealToText(settings.**real, locale);
  return "0";
}

void StoreSetupField(const SetupField& field, double value, Settings& settings) {
  if (const auto* whole = std::get_if<std::int32_t Settings::*>(&field.member)) {
    settings.** whole = RoundToInteger(value);
  } else if (const auto* real = std::get_if<double Settings::*>(&field.member)) {
    settings.** real = value;
  }
}

bool SetupFlag::Get(const Settings& settings) const {
  if (const auto* flag = std::get_if<bool Settings::*>(&member)) return settings.**flag;
  return settings.*std::get<std::int32_t Settings::*>(member) == 1;
}

void SetupFlag::Set(bool value, Settings& settings) const {
  if (const auto* flag = std::get_if<bool Settings::*>(&member)) {
    settings.** flag = value;
  } else {
    settings.*std::get<std::int32_t Settings::*>(member) = value ? 1 : 0;
  }
}

}  // namespace orvalis
