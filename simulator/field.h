#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace orvalis_unit {

// The fields of a frame, in frame order. docs/simulator.md shows the layout.
enum class Field {
  kHumidity,
  kLight,
  kRain,
  kWind,
  kSky,
  kBody,
  kAmbient,
  kHeaterAllowed,
  kHeater,
  kRelayAllowed,
  kRelay,
  kWindAlarm,
  kLightAlarm,
  kCloudAlarm,
  kTrigger
};
inline constexpr std::size_t kFieldCount = 15;

enum class FieldKind {
  kCount,        // converter counts, four digits
  kTemperature,  // degrees Celsius; sign and five digits of hundredths on the wire
  kFlag          // one digit
};

struct FieldRow {
  Field field;
  std::string_view name;
  std::size_t position;  // of the first character of the value, counted from 1
  FieldKind kind;
  double lowest;
  double highest;
  double default_value;  // a quiet, clear night; used when the scenario does not mention the field
};

// One value per field, in its plain unit, indexed by Field.
using Readings = std::array<double, kFieldCount>;

// What the unit writes into TTP or TA when it has no reading, in degrees Celsius ("+19999").
inline constexpr double kNoReading = 199.99;

inline constexpr std::size_t kFrameLength = 117;

constexpr std::size_t Index(Field field) { return static_cast<std::size_t>(field); }

const std::array<FieldRow, kFieldCount>& FieldTable();
const FieldRow& RowOf(Field field);

// Looks up the exact name in the frame ("TTP").
std::optional<Field> FieldByName(std::string_view name);

// A value in the field's plain unit, or "none" for a TTP or TA without a reading.
// Throws std::invalid_argument with a text that says what the field takes.
double ParseFieldValue(Field field, std::string_view text);

// The frame: kFrameLength characters, the last one "#". Values are clamped to their field's range, so that the
// positions always hold.
std::string FrameText(const Readings& readings);

}  // namespace orvalis_unit
