#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvalis {

/// One text line from the sensor unit. Fields are read by position, never by splitting on blanks or names; only the
/// verdict checks its name. docs/serial-protocol.md shows the layout.
class SensorFrame {
 public:
  /// The fields that the program reads, named as in the frame.
  enum class Field {
    kHum,  ///< humidity sensor count, 0 to 1023
    kLgt,  ///< light sensor count; high means dark
    kR,    ///< rain sensor count; high means wet
    kWnd,  ///< wind sensor count
    kTp,   ///< thermopile (sky) reading, hundredths of a degree Celsius
    kTtp,  ///< thermopile body temperature, hundredths of a degree Celsius
    kTa,   ///< ambient temperature, hundredths of a degree Celsius
    kAh,   ///< heater allowed
    kHb,   ///< heater state: 1 on, 2 undetermined, other off
    kAr,   ///< relay allowed
    kRb,   ///< relay state: 1 on; also the unsafe indicator
    kAw,   ///< wind alarm enabled
    kAl,   ///< light alarm enabled
    kAc,   ///< cloud alarm enabled
  };

  /// A frame from the unit ends in "#" at this position, counted from 1. The demonstration lines are six shorter.
  static constexpr std::size_t kTerminatorPosition = 117;
  static constexpr char kTerminator = '#';

  SensorFrame() = default;
  explicit SensorFrame(std::string_view text) : text_(text) {}

  [[nodiscard]] std::string_view text() const { return text_; }

  /// Whether this is a complete line from the unit: "#" is at position 117. Nothing else is checked.
  [[nodiscard]] bool IsComplete() const;

  /// The characters of `field`; fewer, or none, if the line is too short.
  [[nodiscard]] std::string_view Cut(Field field) const;

  /// Whether `field` is preceded by its blank, name and "=", such as " RB=". The first field has no blank.
  [[nodiscard]] bool HasName(Field field) const;

  /// Whether `field` stands after its name and holds a number of its form.
  [[nodiscard]] bool IsWhole(Field field) const;
  /// Whether every field that the program reads does.
  [[nodiscard]] bool IsUndamaged() const;

  /// A field as a whole number, converted by `Val`.
  [[nodiscard]] std::int32_t Integer(Field field) const;
  /// A field as a number, converted by `Val`.
  [[nodiscard]] double Number(Field field) const;
  /// A temperature field in degrees Celsius.
  [[nodiscard]] double Celsius(Field field) const;

 private:
  std::string text_;
};

/// The field of a missing body or ambient temperature.
inline constexpr std::string_view kNoTemperature = "+19999";
/// The humidity field of a faulty sensor.
inline constexpr std::string_view kFaultyHumidity = "0999";

/// The two lines that replace the unit in demo mode, 111 characters each.
inline constexpr std::string_view kDryDemoLine =
    "HUM=0000 LGT=1023 R=0100 WND=0010 TP=-00999 TTP=+00100 TA=+00500 AH=0 HB=0 AR=1 RB=0 AW=1 AL=1 AC=1 Trg=+03691#";
inline constexpr std::string_view kWetDemoLine =
    "HUM=0700 LGT=0001 R=0500 WND=0100 TP=+01000 TTP=+01000 TA=+01500 AH=1 HB=1 AR=1 RB=1 AW=1 AL=1 AC=1 Trg=+03691#";

}  // namespace orvalis
