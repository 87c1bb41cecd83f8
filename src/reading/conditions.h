#pragma once

#include <cstdint>

#include "reading/sensor_frame.h"
#include "reading/weather_state.h"

namespace orvalis {

// From readings to the words and colours that people see and the verdict that roofs obey. Temperatures in degrees
// Celsius, wind in miles per hour, rain and light in counts.

/// "Cloudy" up to `full_cloudy`, "Clear" from `part_cloudy`, "PCloudy" between. Limits the wrong way round leave
/// "Clear" the last word.
[[nodiscard]] Word CloudWord(double difference, std::int32_t part_cloudy, std::int32_t full_cloudy);

/// The clouds figure from the measured sky temperature: 0, 0.5 above `threshold`, 1.0 above the threshold raised by the
/// distance of the two cloud limits.
[[nodiscard]] float CloudsFigure(double sky, double threshold, std::int32_t part_cloudy, std::int32_t full_cloudy);

/// "Windy" above `close`, "Breeze" above `warn`, else "Calm"; a value equal to a limit takes the calmer word.
[[nodiscard]] Word WindWord(double mph, double close, double warn);

/// "Rain" more than 20 counts above the threshold, "Damp" above it, else "Dry".
[[nodiscard]] Word RainWord(std::int32_t count, std::int32_t threshold);

/// "Dark" above the threshold, "Dusk" above 200, else "Day": a high count means darkness.
[[nodiscard]] Word LightWord(std::int32_t count, std::int32_t threshold);

/// "Y" on, "?" undetermined, "N" off.
[[nodiscard]] Word HeaterWord(std::int32_t heater_digit);
/// As the heater's; the undetermined state is the heater's as well.
[[nodiscard]] Word RelayWord(std::int32_t relay_digit, std::int32_t heater_digit);

/// The relay digit of the frame, or -1 where no digit stands: a roof must not stay open on a garbled character.
[[nodiscard]] std::int32_t UnsafeIndicator(const SensorFrame& frame);

}  // namespace orvalis
