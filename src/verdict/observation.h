#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <limits>
#include <optional>
#include <span>
#include <string_view>

#include "verdict/reason.h"

namespace orvalis {

/// Where readings come from.
enum class ReadingSource : std::uint8_t { kNone, kUnit, kDemo };
/// "none", "unit", "demo".
[[nodiscard]] std::string_view Name(ReadingSource source);

/// Safe, or unsafe with every reason that applies.
struct SafetyVerdict {
  bool safe = false;
  ReasonSet reasons;                    ///< empty exactly when it is safe
  std::int64_t since = 0;               ///< when it last became safe or unsafe, ms since 1970-01-01 UTC
  std::chrono::milliseconds lasted{0};  ///< how long ago that was, by a clock that never jumps
  /// When each of `reasons` began to apply, ms since 1970-01-01 UTC.
  std::array<std::int64_t, kReasonCount> reason_since{};
  /// While `kHold` applies: the rest of the hold. It is 0 where only a second good reading is awaited.
  std::chrono::milliseconds hold_left{0};

  /// The same answer for the same reasons.
  [[nodiscard]] bool SameAs(const SafetyVerdict& other) const { return safe == other.safe && reasons == other.reasons; }
};

/// Readings in SI units. Nothing where a value is unknown or not of now.
struct ObservedValues {
  using Value = std::optional<double>;
  Value ambient_c;     ///< degrees Celsius, as the next five
  Value body_c;        ///< the sky sensor's own temperature
  Value sky_c;         ///< measured
  Value clear_sky_c;   ///< calculated for a clear sky
  Value difference_c;  ///< ambient minus measured sky
  Value dew_point_c;
  Value humidity_percent;  ///< relative humidity as computed, not clamped
  Value wind_m_s;
  Value wind_average_m_s;
  Value wind_gust_m_s;
  Value rain_counts;
  Value light_counts;         ///< high is dark
  Value cloud_cover_percent;  ///< 0, 50 or 100, as the cloud word is
};

/// One row of the table of values.
struct ObservedValue {
  std::string_view name;  ///< on all interfaces
  ObservedValues::Value ObservedValues::*member;
};
[[nodiscard]] std::span<const ObservedValue> ObservedValueTable();

/// The conditions in words, with their fixed texts. Empty where they are unknown or not of now.
struct ObservedWords {
  std::string_view sky;     ///< "Clear", "PCloudy", "Cloudy"
  std::string_view wind;    ///< "Calm", "Breeze", "Windy"
  std::string_view rain;    ///< "Dry", "Damp", "Rain"
  std::string_view light;   ///< "Dark", "Dusk", "Day"
  std::string_view heater;  ///< "Y", "?", "N", as the relay
  std::string_view relay;
};

/// What the explanations of the reasons need. Counts as the unit sends them.
struct VerdictFigures {
  std::int32_t rain = 0;
  std::int32_t rain_limit = 0;
  std::int32_t rain_on_time = 0;  ///< seconds that the unit stays on after rain
  /// The rest of these, where it rained in this connection.
  std::optional<std::chrono::milliseconds> rain_on_left;
  double wind = 0;
  std::int32_t wind_limit = 0;  ///< counts, as the unit has it
  double wind_mph = 0;
  double wind_mph_limit = 0;
  double sky_c = 0;
  double sky_limit_c = 0;
  double sky_hysteresis_c = 0;  ///< the unit's cloud alarm ends this much below the limit
  double difference_c = 0;
  std::int32_t cloudy_limit_c = 0;
  double light = 0;
  std::int32_t light_limit = 0;
  // Whether the unit has the alarm on. For rain it does not report that.
  bool wind_alarm = false;
  bool cloud_alarm = false;
  bool light_alarm = false;
  bool relay_forced = false;
  std::optional<std::chrono::milliseconds> test_left;  ///< of a timed test, where no person forced it for good
};

/// An account of now for everybody who asks: panel, logs, alerts, clients and the network read this and judge nothing
/// again.
struct Observation {
  std::int64_t time = 0;  ///< of this account, ms since 1970-01-01 UTC
  /// Since the last undamaged frame; none before the first.
  std::optional<std::chrono::milliseconds> age;
  ReadingSource source = ReadingSource::kNone;  ///< of the values; none where they are not of now
  bool connected = false;                       ///< the link to the unit is up
  std::uint64_t frames = 0;                     ///< complete ones since the start
  std::uint64_t damaged_frames = 0;             ///< of these
  ObservedValues values;
  ObservedWords words;
  SafetyVerdict verdict;
  VerdictFigures figures;

  /// Seconds since the last undamaged frame, infinite before the first.
  [[nodiscard]] double AgeSeconds() const {
    return age ? std::chrono::duration<double>(*age).count() : std::numeric_limits<double>::infinity();
  }
};

}  // namespace orvalis
