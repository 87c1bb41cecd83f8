#include "unit/unit_commands.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>

namespace orvalis {
namespace {

using Form = UnitCommand::Form;

constexpr std::size_t kMarkAndLetters = 3;

/// Rounded and clamped: a setting far out of range must not stop the polling.
std::int32_t Whole(double value) {
  constexpr double kLowest = std::numeric_limits<std::int32_t>::min();
  constexpr double kHighest = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::clamp(std::nearbyint(value), kLowest, kHighest));
}

constexpr bool Always(const UnitOptions&) { return true; }
constexpr bool Never(const UnitOptions&) { return false; }

constexpr UnitCommand OnOff(const char* letters, bool UnitOptions::*option,
                            bool (*reported)(const UnitOptions&) = Always) {
  return {letters, Form::kOnOff, option, reported, nullptr};
}
constexpr UnitCommand Number(const char* letters, Form form, std::string_view key, Phrase takes,
                             std::int32_t (*setting)(const Settings&)) {
  return {letters, form, nullptr, nullptr, setting, key, takes};
}

constexpr std::array<UnitCommand, kUnitCommandCount> kCommands{{
    OnOff("AH", &UnitOptions::allow_heater),
    OnOff("SH", &UnitOptions::force_heater, [](const UnitOptions& o) { return !o.allow_heater; }),
    OnOff("AR", &UnitOptions::allow_relay),
    OnOff("Sr", &UnitOptions::force_relay, [](const UnitOptions& o) { return !o.allow_relay; }),
    OnOff("Ar", &UnitOptions::allow_rain, Never),
    OnOff("AX", &UnitOptions::allow_clouds),
    OnOff("AL", &UnitOptions::allow_light),
    OnOff("AW", &UnitOptions::allow_wind),
    Number("Sh", Form::kThreeDigits, "TPTempHysteresis", Message::Of("three digits, of tenths"),
           [](const Settings& s) { return Whole(s.TPTempHysteresis * 10); }),
    Number("ST", Form::kThreeDigits, "RainOnTime", Message::Of("three digits"),
           [](const Settings& s) { return s.RainOnTime; }),
    Number("SW", Form::kThreeDigits, "WindThreshold", Message::Of("three digits"),
           [](const Settings& s) { return s.WindThreshold; }),
    Number("SR", Form::kThreeDigits, "RainThreshold", Message::Of("three digits"),
           [](const Settings& s) { return s.RainThreshold; }),
    Number("SX", Form::kSignAndThreeDigits, "CloudsThreshold", Message::Of("a sign and three digits"),
           [](const Settings& s) { return Whole(s.CloudsThreshold); }),
    Number("SL", Form::kThreeDigits, "LightThreshold", Message::Of("three digits"),
           [](const Settings& s) { return s.LightThreshold; }),
    Number("SC", Form::kTwoDigits, "FullCloudyDegC", Message::Of("two digits"),
           [](const Settings& s) { return s.FullCloudyDegC; }),
    Number("SM", Form::kOneDigit, "WindMultiplier", Message::Of("one digit"),
           [](const Settings& s) { return s.WindMultiplier; }),
    Number("Sd", Form::kThreeDigits, "WindTimer", Message::Of("three digits"),
           [](const Settings& s) { return s.WindTimer; }),
}};

}  // namespace

void UnitOptions::TakeFrom(const SensorFrame& frame) {
  using Field = SensorFrame::Field;
  allow_light = frame.Integer(Field::kAl) == 1;
  allow_wind = frame.Integer(Field::kAw) == 1;
  allow_clouds = frame.Integer(Field::kAc) == 1;
  // The report of a device that may switch itself does not tell whether it is forced; the command table reflects that.
  allow_relay = frame.Integer(Field::kAr) == 1;
  force_relay = !allow_relay && frame.Integer(Field::kRb) == 1;
  allow_heater = frame.Integer(Field::kAh) == 1;
  force_heater = !allow_heater && frame.Integer(Field::kHb) == 1;
  // The state from an earlier connection may be that of another unit, or outdated by a power loss.
  allow_rain = false;
}

std::int32_t UnitCommand::Value(const Settings& settings, const UnitOptions& options) const {
  return form == Form::kOnOff ? static_cast<std::int32_t>(options.*option) : setting(settings);
}

std::string UnitCommand::Encode(std::int32_t value) const {
  std::string text = ":";
  text += letters;
  if (form == Form::kSignAndThreeDigits) text += value < 0 ? '-' : '+';
  const std::int64_t magnitude = std::llabs(static_cast<long long>(value));
  const auto digit = [&](std::int64_t unit) { text += static_cast<char>('0' + magnitude / unit % 10); };
  if (form == Form::kThreeDigits || form == Form::kSignAndThreeDigits) digit(100);
  if (form != Form::kOnOff && form != Form::kOneDigit) digit(10);
  digit(1);
  return text;
}

std::int32_t UnitCommand::Received(std::int32_t value) const {
  return std::stoi(Encode(value).substr(kMarkAndLetters));
}

Message UnitCommand::CutText(std::int32_t value) const {
  if (form == Form::kOnOff) return {};
  const std::string sent = Encode(value).substr(kMarkAndLetters);
  if (Received(value) == value) return {};
  return Message::Of("the unit gets %1 (it takes %2)").With(sent, takes);
}

std::span<const UnitCommand, kUnitCommandCount> UnitCommands() { return kCommands; }

const UnitCommand* FindUnitCommand(std::string_view key) {
  const auto found = std::ranges::find(kCommands, key, &UnitCommand::key);
  return key.empty() || found == kCommands.end() ? nullptr : &*found;
}

void LastSent::BeginConnection(const UnitOptions& reported) {
  for (std::size_t i = 0; i < kCommands.size(); ++i) {
    values_[i].reset();
    known_[i] = kCommands[i].form != Form::kOnOff || kCommands[i].reported(reported);
    if (kCommands[i].form == Form::kOnOff) values_[i] = kCommands[i].Value({}, reported);
  }
}

void LastSent::BeginAfterSilence() {
  for (std::size_t i = 0; i < kCommands.size(); ++i) {
    if (known_[i]) values_[i].reset();
  }
}

}  // namespace orvalis
