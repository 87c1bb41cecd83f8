#include "publish/pws_upload.h"

#include <cstdint>

#include "base/text.h"
#include "publish/url_helper.h"
#include "reading/conversions.h"

namespace orvalis {
namespace {

/// A value with one decimal in a field of `width` characters, encoded.
std::string Field(double value, std::size_t width) { return UrlEncode(RightAlign(FormatFixed(value, 1), width)); }

}  // namespace

std::string_view CloudCode(double sky, double ambient, bool raining, const Settings& settings) {
  constexpr double kSurelyClear = -5.0;
  if (sky <= kSurelyClear) return "SKC";
  if (raining) return "OVC";
  // Both have one decimal, so the difference does too; rounding removes the binary error.
  const double difference = RoundToDecimals(ambient - sky, 1);
  if (difference >= settings.PartCloudyDegC) return "SKC";
  return difference <= settings.FullCloudyDegC ? "OVC" : "SCT";
}

std::string UploadTime(const CivilTime& utc) {
  constexpr std::int64_t kMsPerSecond = 1000;
  const std::int64_t second = (UtcMilliseconds(utc) + kMsPerSecond / 2) / kMsPerSecond;
  return FormatTime(TimeAt(second * kMsPerSecond), "YYYY-MM-DD+hh:nn.ss.00");
}

std::string UploadQuery(std::string_view station, std::string_view password, const CivilTime& utc,
                        const WeatherState& weather, const Settings& settings,
                        const std::vector<RequestRow>& additional, const ToCodePage& to_code_page) {
  const std::string_view clouds =
      CloudCode(RoundToDecimals(weather.sky_celsius, 1), RoundToDecimals(weather.ambient_celsius, 1),
                weather.rain > settings.RainThreshold, settings);
  std::string query;
  query.append("ID=").append(station).append("&PASSWORD=").append(password).append("&");
  query.append("dateutc=").append(UrlEncode(UploadTime(utc)));
  query.append("&tempf=").append(Field(ToFahrenheit(weather.ambient_celsius), 6));
  query.append("&windspeedmph=").append(Field(weather.wind_average_mph, 5));
  query.append("&windgustmph=").append(Field(weather.wind_gust_mph, 6));
  query.append("&humidity=").append(Field(weather.humidity_percent, 5));
  query.append("&clouds=").append(clouds);
  query.append("&softwaretype=orvalis%20v01&action=updateraw&realtime=1&rtfreq=5.0");
  for (const RequestRow& row : additional) {
    if (row.name.empty() && row.value.empty()) continue;
    query.append("&").append(UrlEncode(row.name, to_code_page)).append("=").append(UrlEncode(row.value, to_code_page));
  }
  return query;
}

}  // namespace orvalis
