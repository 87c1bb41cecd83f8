#include "app/setup_advice.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <variant>

#include "app/setup_fields.h"
#include "base/run_time_error.h"
#include "unit/unit_commands.h"

namespace orvalis {
namespace {

/// Two limits, of which the second should be the higher one.
struct LimitPair {
  double Settings::*low_real;
  double Settings::*high_real;
  std::int32_t Settings::*low_whole;
  std::int32_t Settings::*high_whole;
  Phrase text;

  [[nodiscard]] bool Crossed(const Settings& settings) const {
    return low_real != nullptr ? settings.*high_real < settings.*low_real : settings.*high_whole < settings.*low_whole;
  }
  [[nodiscard]] bool Has(const SetupField& field) const {
    if (low_real != nullptr)
      return field.member == SetupField::Member(low_real) || field.member == SetupField::Member(high_real);
    return field.member == SetupField::Member(low_whole) || field.member == SetupField::Member(high_whole);
  }
};

constexpr LimitPair kLimits[] = {
    {&Settings::WindSpeedWarn, &Settings::WindSpeedCloseD, nullptr, nullptr,
     Message::Of("\"Windy\" is below \"Breeze\"")},
    {nullptr, nullptr, &Settings::FullCloudyDegC, &Settings::PartCloudyDegC,
     Message::Of("\"Clear\" is below \"Cloudy\"")},
};

bool IsOf(const SettingKey& key, const SetupField& field) {
  if (const auto* whole = std::get_if<std::int32_t Settings::*>(&field.member)) {
    return key.member == SettingMember(*whole);
  }
  const auto* real = std::get_if<double Settings::*>(&field.member);
  return real != nullptr && key.member == SettingMember(*real);
}

const UnitCommand* CommandOf(const SetupField& field) {
  const auto keys = SettingKeys();
  const auto key = std::ranges::find_if(keys, [&](const SettingKey& k) { return IsOf(k, field); });
  return key == keys.end() ? nullptr : FindUnitCommand(key->name);
}

/// Why a field's text is invalid.
Message Reason(const SetupField& field, std::string_view text, NumberLocale locale) {
  try {
    static_cast<void>(field.whole_number ? TextToInteger(text, locale) : TextToReal(text, locale));
  } catch (const RunTimeError& error) {
    if (text.find_first_not_of(" \t") == std::string_view::npos) return Message::Of("empty");
    if (error.number() == RunTimeError::kOverflow) return Message::Of("too large");
    return field.whole_number ? Message::Of("not a whole number") : Message::Of("not a number");
  }
  return RangeText(field.range);
}

/// What would be stored, and why, if not the number as typed.
Message Stored(const SetupField& field, const SetupReading& reading, std::string_view text, NumberLocale locale) {
  if (!reading.message.empty()) {
    const Message reason = Reason(field, text, locale);
    return reading.IsSentinel() ? Message::Of("%1: OK returns here").With(reason)
                                : Message::Of("stores %1: %2").With(RealToText(reading.value, locale), reason);
  }
  if (reading.IsSentinel()) return Message::Of("-9999 cannot be stored: OK returns here");
  const char other_separator = locale.decimal_separator == ',' ? '.' : ',';
  if (TextToReal(text, locale) != reading.value) {
    return Message::Of("stores %1: a whole number is needed").With(RealToText(reading.value, locale));
  }
  if (text.find(other_separator) != std::string_view::npos) {
    return Message::Of("stores %1").With(RealToText(reading.value, locale));
  }
  return {};
}

void Append(Message& advice, const Message& more) { advice = Joined(advice, "; ", more); }

}  // namespace

Settings TypedSettings(std::span<const std::string> texts, NumberLocale locale) {
  const auto fields = SetupFields();
  Settings settings;
  for (std::size_t i = 0; i < fields.size(); ++i) {
    StoreSetupField(fields[i], ReadSetupField(fields[i], texts[i], locale).value, settings);
  }
  return settings;
}

std::vector<Message> AdviceOnSetup(std::span<const std::string> texts, NumberLocale locale) {
  const auto fields = SetupFields();
  const Settings settings = TypedSettings(texts, locale);
  std::vector<Message> advice(fields.size());
  for (std::size_t i = 0; i < fields.size(); ++i) {
    const SetupReading reading = ReadSetupField(fields[i], texts[i], locale);
    advice[i] = Stored(fields[i], reading, texts[i], locale);
    if (reading.IsSentinel()) continue;  // it is not stored
    if (const UnitCommand* command = CommandOf(fields[i])) {
      Append(advice[i], command->CutText(command->setting(settings)));
    }
    for (const LimitPair& limits : kLimits) {
      if (limits.Has(fields[i]) && limits.Crossed(settings)) Append(advice[i], limits.text);
    }
  }
  return advice;
}

std::string RefusalOf(const SettingKey& key, std::string_view text, NumberLocale locale) {
  const auto fields = SetupFields();
  const auto field = std::ranges::find_if(fields, [&](const SetupField& f) { return IsOf(key, f); });
  if (field != fields.end()) {
    const SetupReading reading = ReadSetupField(*field, text, locale);
    if (!reading.message.empty()) return Reason(*field, text, locale).English();
    if (reading.IsSentinel()) return "the setup dialog reserves -9999 for invalid input";
  }
  const UnitCommand* command = FindUnitCommand(key.name);
  if (command == nullptr || !command->Unsigned()) return {};
  Settings settings;
  SetFromText(key, text, locale, settings);
  return command->setting(settings) < 0 ? "must not be negative: the command to the unit has no sign" : "";
}

std::string CutForUnit(const SettingKey& key, std::string_view text, NumberLocale locale) {
  const UnitCommand* command = FindUnitCommand(key.name);
  if (command == nullptr) return {};
  Settings settings;
  SetFromText(key, text, locale, settings);
  return command->CutText(command->setting(settings)).English();
}

}  // namespace orvalis
