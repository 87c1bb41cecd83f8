#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "config/settings.h"
#include "reading/conversions.h"

namespace orvalis {

/// The units of wind that a person may choose; the numbers are those of the setting "WindUnit".
enum class WindUnit : std::uint8_t { kMilesPerHour, kKilometresPerHour, kMetresPerSecond, kKnots };
inline constexpr std::array kWindUnits{WindUnit::kMilesPerHour, WindUnit::kKilometresPerHour,
                                       WindUnit::kMetresPerSecond, WindUnit::kKnots};

/// "mph", "km/h", "m/s", "kn"
[[nodiscard]] std::string_view Name(WindUnit unit);
[[nodiscard]] double FromMph(double mph, WindUnit unit);

/// The units in which a person reads values. Clients, logs, files and uploads have their own, whatever is chosen here.
struct DisplayUnits {
  bool centigrade = true;
  WindUnit wind = WindUnit::kMilesPerHour;

  [[nodiscard]] double Temperature(double celsius) const { return centigrade ? celsius : ToFahrenheit(celsius); }
  /// Of two temperatures.
  [[nodiscard]] double Difference(double celsius) const { return centigrade ? celsius : celsius * 1.8; }
  [[nodiscard]] double Wind(double mph) const { return FromMph(mph, wind); }
  /// "°C" or "°F"
  [[nodiscard]] std::string_view TemperatureName() const { return centigrade ? "°C" : "°F"; }
  [[nodiscard]] std::string_view WindName() const { return Name(wind); }

  [[nodiscard]] bool operator==(const DisplayUnits& other) const = default;
};

/// What the user has chosen.
[[nodiscard]] DisplayUnits UnitsOf(const Settings& settings);

/// What people are used to from the weather reports of `territory`, an ISO 3166 code of two letters; "" for none in
/// particular.
[[nodiscard]] DisplayUnits UsualUnits(std::string_view territory);

}  // namespace orvalis
