#pragma once

#include <cstdint>
#include <string_view>

#include "reading/sensor_frame.h"
#include "reading/weather_state.h"

namespace orvalis {

// From readings to condition words, colours and the verdict. Temperatures in degrees Celsius, wind in miles per hour,
// rain and light in counts.

/// "Cloudy" up to `full_cloudy`, "Clear" from `part_cloudy`, "PCloudy" between. If the limits are reversed, "Clear"
/// wins.
[[nodiscard]] Word CloudWord(double difference, std::int32_t part_cloudy, std::int32_t full_cloudy);

/// 0, 50 or 100 for "Clear", "PCloudy" and "Cloudy".
[[nodiscard]] double CloudCoverPercent(std::string_view cloud_word);

/// The clouds figure from the measured sky temperature: 0; 0.5 above `threshold`; 1.0 above `threshold` plus the
/// difference of the two cloud limits.
[[nodiscard]] float CloudsFigure(double sky, double threshold, std::int32_t part_cloudy, std::int32_t full_cloudy);

/// "Windy" above `close`, "Breeze" above `warn`, else "Calm"; a value equal to a limit gets the calmer word.
[[nodiscard]] Word WindWord(double mph, double close, double warn);

/// "Damp" for so many counts above the threshold.
inline constexpr std::int32_t kDampBand = 20;
/// "Rain" more than 20 counts above the threshold, "Damp" above it, else "Dry".
[[nodiscard]] Word RainWord(std::int32_t count, std::int32_t threshold);

/// "Dusk" above so many counts.
inline constexpr std::int32_t kDuskAbove = 200;
/// "Dark" above the threshold, "Dusk" above 200, else "Day": a high count means darkness.
[[nodiscard]] Word LightWord(std::int32_t count, std::int32_t threshold);

/// "Y" on, "?" undetermined, "N" off.
[[nodiscard]] Word HeaterWord(std::int32_t heater_digit);
/// As the heater's; the undetermined state also comes from the heater digit.
[[nodiscard]] Word RelayWord(std::int32_t relay_digit, std::int32_t heater_digit);

/// The relay digit of the frame, or -1 if it is not a digit: a garbled character must not keep a roof open.
[[nodiscard]] std::int32_t UnsafeIndicator(const SensorFrame& frame);

}  // namespace orvalis
