#pragma once

#include <array>
#include <chrono>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "reading/sensor_frame.h"
#include "reading/weather_state.h"

namespace orvalis {

/// A set of the values of an enumeration with at most eight of them.
template <typename Member>
class SmallSet {
 public:
  constexpr SmallSet() = default;
  [[nodiscard]] static constexpr SmallSet FromBits(std::uint8_t bits) {
    SmallSet set;
    set.bits_ = bits;
    return set;
  }
  [[nodiscard]] constexpr std::uint8_t bits() const { return bits_; }
  [[nodiscard]] constexpr bool Has(Member member) const { return (bits_ & Bit(member)) != 0; }
  constexpr void Put(Member member) { bits_ = static_cast<std::uint8_t>(bits_ | Bit(member)); }
  constexpr void Put(SmallSet other) { bits_ = static_cast<std::uint8_t>(bits_ | other.bits_); }
  bool operator==(const SmallSet&) const = default;

 private:
  static constexpr std::uint8_t Bit(Member member) {
    return static_cast<std::uint8_t>(1U << static_cast<unsigned>(member));
  }
  std::uint8_t bits_ = 0;
};

/// What the history remembers of a working cycle. Their order is that of the columns in the store.
enum class Quantity : std::uint8_t { kSky, kClearSky, kAmbient, kDewPoint, kWind, kGust, kHumidity };
inline constexpr std::size_t kQuantities = 7;

/// What was the matter with the weather. The numbers are in the store.
enum class Condition : std::uint8_t { kClear = 0, kPartlyCloudy = 1, kCloudy = 2, kRain = 3, kUnsafe = 4 };
inline constexpr std::size_t kConditions = 5;

/// One number for each quantity, in °C, miles per hour and percent, in steps of a hundredth. Not a number where it was
/// not known.
class Values {
 public:
  Values();
  [[nodiscard]] float operator[](Quantity quantity) const { return values_[static_cast<std::size_t>(quantity)]; }
  [[nodiscard]] float& operator[](Quantity quantity) { return values_[static_cast<std::size_t>(quantity)]; }
  [[nodiscard]] bool Knows(Quantity quantity) const { return !std::isnan(operator[](quantity)); }
  /// Whether the same quantities are known in both.
  [[nodiscard]] bool KnowsTheSameAs(const Values& other) const;

 private:
  std::array<float, kQuantities> values_;
};

/// What one working cycle measured. Times are milliseconds since 1970-01-01 UTC.
struct Sample {
  std::int64_t time = 0;
  Values values;
  SmallSet<Quantity> held;  ///< not read in this cycle: an earlier reading stands in
  SmallSet<Condition> conditions;
};

/// The lowest and highest values of successive samples under the same conditions: what is left of them when they grow
/// old. Of one sample, both are its values.
struct Span {
  std::int64_t first = 0;  ///< time of the first sample, and of the last
  std::int64_t last = 0;
  Values lowest;
  Values highest;
  SmallSet<Quantity> held;
  SmallSet<Condition> conditions;
};

/// Between samples that are further apart nothing is known: the panel counts values as old after the same time.
inline constexpr std::int64_t kLongestStepMs = std::chrono::milliseconds(kFreshFor).count();
/// Old samples are put together into spans of less than this.
inline constexpr std::int64_t kSpanMs = 60'000;

/// What there is to remember of the working cycle that made `weather` from `frame`.
[[nodiscard]] Sample SampleOf(const WeatherState& weather, const SensorFrame& frame, std::int64_t time);

[[nodiscard]] Span SpanOf(const Sample& sample);

/// Takes `sample` into `span` when it follows closely enough, under the same conditions and with the same quantities
/// known, and the span stays short. Otherwise changes nothing and returns false.
[[nodiscard]] bool Absorb(Span& span, const Sample& sample);

}  // namespace orvalis
