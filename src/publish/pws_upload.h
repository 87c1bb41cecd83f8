#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "base/clock.h"
#include "config/settings.h"
#include "publish/http_request.h"
#include "reading/weather_state.h"

namespace orvalis {

/// The sky code for the weather service: "SKC" clear, "SCT" scattered clouds, "OVC" overcast.
///
/// `sky` and `ambient` are in degrees Celsius with one decimal, as on the panel, so that an upload can be checked
/// against it. A sky at -5.0 or below is always clear; above that rain (a count above its threshold) means overcast,
/// and otherwise the difference decides.
[[nodiscard]] std::string_view CloudCode(double sky, double ambient, bool raining, const Settings& settings);

/// `utc`, rounded to the second, in the format of the service's clock field before encoding: "2024-01-02+13:45.30.00",
/// with a full stop between minutes and seconds.
[[nodiscard]] std::string UploadTime(const CivilTime& utc);

/// The query that reports `weather` at `utc`. The station ID and the password are not encoded, the values are; the
/// user's `additional` variables follow, with names and values encoded in the code page.
[[nodiscard]] std::string UploadQuery(std::string_view station, std::string_view password, const CivilTime& utc,
                                      const WeatherState& weather, const Settings& settings,
                                      const std::vector<RequestRow>& additional, const ToCodePage& to_code_page);

}  // namespace orvalis
