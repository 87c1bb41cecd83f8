#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/clock.h"
#include "config/settings.h"
#include "publish/http_request.h"
#include "reading/weather_state.h"

namespace orvalis {

/// What the weather service is told of the sky: "SKC" clear, "SCT" scattered clouds, "OVC" overcast.
///
/// `sky` and `ambient` are in degrees Celsius as the panel shows them, with one decimal, so that what is sent can be
/// checked by reading the panel. A sky at -5.0 or below is clear whatever else holds; above that the difference
/// decides, and rain (a count above its threshold) is overcast.
[[nodiscard]] std::string_view CloudCode(double sky, double ambient, bool raining, const Settings& settings);

/// `utc`, to the nearest second, as the service's clock field has it before it is encoded: "2024-01-02+13:45.30.00",
/// with a full stop between minutes and seconds.
[[nodiscard]] std::string UploadTime(const CivilTime& utc);

/// The query that tells the service `weather` at `utc`. The station's ID and the password go in as they stand, the
/// values encoded; `further` variables of the user's, names and values encoded in the code page, follow at the end.
[[nodiscard]] std::string UploadQuery(std::string_view station, std::string_view password, const CivilTime& utc,
                                      const WeatherState& weather, const Settings& settings,
                                      const std::vector<RequestRow>& further, const ToCodePage& to_code_page);

}  // namespace orvalis
