#pragma once

#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "reading/sensor_frame.h"
#include "reading/weather_state.h"

namespace orvalis {

/// A set of enumerators, for enumerations with at most sixteen.
template <typename Member>
class SmallSet {
 public:
  constexpr SmallSet() = default;
  [[nodiscard]] static constexpr SmallSet FromBits(std::uint16_t bits) {
    SmallSet set;
    set.bits_ = bits;
    return set;
  }
  [[nodiscard]] constexpr std::uint16_t bits() const { return bits_; }
  [[nodiscard]] constexpr bool Has(Member member) const { return (bits_ & Bit(member)) != 0; }
  constexpr void Put(Member member) { bits_ = static_cast<std::uint16_t>(bits_ | Bit(member)); }
  constexpr void Put(SmallSet other) { bits_ = static_cast<std::uint16_t>(bits_ | other.bits_); }
  bool operator==(const SmallSet&) const = default;

 private:
  static constexpr std::uint16_t Bit(Member member) {
    return static_cast<std::uint16_t>(1U << static_cast<unsigned>(member));
  }
  std::uint16_t bits_ = 0;
};

/// The quantities recorded in the history, in the order of the store's columns.
enum class Quantity : std::uint8_t { kSky, kClearSky, kAmbient, kDewPoint, kWind, kGust, kHumidity, kRain, kLight };
inline constexpr std::size_t kQuantities = 9;

/// Weather conditions. The numbers are stored.
enum class Condition : std::uint8_t { kClear = 0, kPartlyCloudy = 1, kCloudy = 2, kRain = 3, kUnsafe = 4 };
inline constexpr std::size_t kConditions = 5;

/// One value per quantity, in °C, miles per hour, percent and, for rain and light, the unit's counts, rounded to
/// hundredths; NaN where unknown.
class Values {
 public:
  Values();
  [[nodiscard]] float operator[](Quantity quantity) const { return values_[static_cast<std::size_t>(quantity)]; }
  [[nodiscard]] float& operator[](Quantity quantity) { return values_[static_cast<std::size_t>(quantity)]; }
  [[nodiscard]] bool Knows(Quantity quantity) const { return !std::isnan(operator[](quantity)); }
  /// Whether the same quantities are known in both.
  [[nodiscard]] bool HasSameKnownAs(const Values& other) const;

 private:
  std::array<float, kQuantities> values_;
};

/// The measurements of one working cycle. Times are milliseconds since 1970-01-01 UTC.
struct Sample {
  std::int64_t time = 0;
  Values values;
  SmallSet<Quantity> held;  ///< not read in this cycle: an earlier reading is used
  SmallSet<Condition> conditions;
};

/// The lowest and highest values of successive samples under the same conditions, into which old samples are merged.
/// For a single sample both are its values.
struct Span {
  std::int64_t first = 0;  ///< time of the first sample, and of the last
  std::int64_t last = 0;
  Values lowest;
  Values highest;
  SmallSet<Quantity> held;
  SmallSet<Condition> conditions;
};

/// Nothing is known between samples further apart than this, the age at which the panel shows values as stale.
inline constexpr std::int64_t kLongestStepMs = std::chrono::milliseconds(kFreshFor).count();
/// Old samples are merged into spans shorter than this.
inline constexpr std::int64_t kSpanMs = 60'000;

/// The sample of the working cycle that computed `weather` from `frame`.
[[nodiscard]] Sample SampleOf(const WeatherState& weather, const SensorFrame& frame, std::int64_t time);

[[nodiscard]] Span SpanOf(const Sample& sample);

/// Extends `span` by `sample` if it follows closely, under the same conditions and with the same quantities known, and
/// the span stays short. Otherwise changes nothing and returns false.
[[nodiscard]] bool Absorb(Span& span, const Sample& sample);

}  // namespace orvalis
