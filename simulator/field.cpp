#include "field.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <stdexcept>

#include "text.h"

namespace orvalis_unit {
namespace {

constexpr double kHighestCount = 1023.0;        // ten-bit converter
constexpr double kHighestTemperature = 999.99;  // five digits of hundredths

// The six characters between the last field and the terminator: the firmware's mark.
constexpr std::string_view kFirmwareMark = " FW=21";
constexpr std::size_t kFirmwarePosition = 111;

constexpr FieldRow Count(Field field, std::string_view name, std::size_t position, double default_value) {
  return {field, name, position, FieldKind::kCount, 0.0, kHighestCount, default_value};
}
constexpr FieldRow Temperature(Field field, std::string_view name, std::size_t position, double default_value) {
  return {field, name, position, FieldKind::kTemperature, -kHighestTemperature, kHighestTemperature, default_value};
}
constexpr FieldRow Flag(Field field, std::string_view name, std::size_t position, double highest = 1.0) {
  return {field, name, position, FieldKind::kFlag, 0.0, highest, 0.0};
}

constexpr double kHeaterUndetermined = 2.0;

constexpr std::array<FieldRow, kFieldCount> kTable = {
    Count(Field::kHumidity, "HUM", 5, 591),
    Count(Field::kLight, "LGT", 14, 1005),
    Count(Field::kRain, "R", 21, 220),
    Count(Field::kWind, "WND", 30, 3),
    Temperature(Field::kSky, "TP", 38, -15.0),
    Temperature(Field::kBody, "TTP", 49, 10.5),
    Temperature(Field::kAmbient, "TA", 59, 10.0),
    Flag(Field::kHeaterAllowed, "AH", 69),
    Flag(Field::kHeater, "HB", 74, kHeaterUndetermined),
    Flag(Field::kRelayAllowed, "AR", 79),
    Flag(Field::kRelay, "RB", 84),
    Flag(Field::kWindAlarm, "AW", 89),
    Flag(Field::kLightAlarm, "AL", 94),
    Flag(Field::kCloudAlarm, "AC", 99),
    Temperature(Field::kTrigger, "Trg", 105, 36.91),
};

std::string ValueText(const FieldRow& row, double value) {
  value = std::clamp(value, row.lowest, row.highest);
  std::array<char, 16> text{};
  switch (row.kind) {
    case FieldKind::kCount:
      std::snprintf(text.data(), text.size(), "%04ld", std::lround(value));
      break;
    case FieldKind::kTemperature:
      std::snprintf(text.data(), text.size(), "%+06ld", std::lround(value * 100.0));
      break;
    case FieldKind::kFlag:
      std::snprintf(text.data(), text.size(), "%ld", std::lround(value));
      break;
  }
  return text.data();
}

}  // namespace

const std::array<FieldRow, kFieldCount>& FieldTable() { return kTable; }

const FieldRow& RowOf(Field field) { return kTable[Index(field)]; }

std::optional<Field> FieldByName(std::string_view name) {
  const auto row = std::ranges::find(kTable, name, &FieldRow::name);
  if (row == kTable.end()) return {};
  return row->field;
}

double ParseFieldValue(Field field, std::string_view text) {
  const FieldRow& row = RowOf(field);
  const bool may_be_missing = field == Field::kBody || field == Field::kAmbient;
  if (may_be_missing && text == "none") return kNoReading;

  const auto value = ParseNumber(text);
  const bool must_be_whole = row.kind != FieldKind::kTemperature;
  if (!value || *value < row.lowest || *value > row.highest || (must_be_whole && *value != std::floor(*value))) {
    throw std::invalid_argument(std::string(row.name) + " takes " + (must_be_whole ? "a whole number" : "degrees") +
                                " from " + NumberText(row.lowest) + " to " + NumberText(row.highest) +
                                (may_be_missing ? " or none" : "") + ", not " + Quoted(text));
  }
  return *value;
}

std::string FrameText(const Readings& readings) {
  std::string line(kFrameLength, ' ');
  const auto put = [&line](std::size_t position, std::string_view text) {
    std::ranges::copy(text, line.begin() + static_cast<std::ptrdiff_t>(position - 1));
  };
  for (const FieldRow& row : kTable) {
    put(row.position - row.name.size() - 1, row.name);
    put(row.position - 1, "=");
    put(row.position, ValueText(row, readings[Index(row.field)]));
  }
  put(kFirmwarePosition, kFirmwareMark);
  put(kFrameLength, "#");
  return line;
}

}  // namespace orvalis_unit
