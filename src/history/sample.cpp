#include "history/sample.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/text.h"

namespace orvalis {
namespace {

constexpr float kUnknown = std::numeric_limits<float>::quiet_NaN();

float Rounded(double value) {
  constexpr int kDecimals = 2;
  return std::isfinite(value) ? static_cast<float>(RoundToDecimals(value, kDecimals)) : kUnknown;
}

SmallSet<Condition> ConditionsOf(const WeatherState& weather) {
  SmallSet<Condition> conditions;
  // Without an ambient temperature the sky word is meaningless.
  if (weather.ambient_known) {
    if (weather.cloud.text == "Clear") conditions.Put(Condition::kClear);
    if (weather.cloud.text == "PCloudy") conditions.Put(Condition::kPartlyCloudy);
    if (weather.cloud.text == "Cloudy") conditions.Put(Condition::kCloudy);
  }
  if (weather.raining) conditions.Put(Condition::kRain);
  if (weather.unsafe_indicator != 0) conditions.Put(Condition::kUnsafe);
  return conditions;
}

}  // namespace

Values::Values() { values_.fill(kUnknown); }

bool Values::HasSameKnownAs(const Values& other) const {
  return std::equal(values_.begin(), values_.end(), other.values_.begin(),
                    [](float one, float two) { return std::isnan(one) == std::isnan(two); });
}

Sample SampleOf(const WeatherState& weather, const SensorFrame& frame, std::int64_t time) {
  using enum Quantity;
  Sample sample{.time = time, .values = {}, .held = {}, .conditions = ConditionsOf(weather)};
  const auto put = [&](Quantity quantity, double value, bool known = true) {
    if (known) sample.values[quantity] = Rounded(value);
  };
  const bool humidity_known = weather.ambient_known && !weather.humidity_faulty;
  put(kSky, weather.sky_celsius, !weather.sky_faulty);
  put(kClearSky, weather.clear_sky_celsius, humidity_known);
  put(kAmbient, weather.ambient_celsius, weather.ambient_known);
  put(kDewPoint, weather.dew_point_celsius, humidity_known);
  put(kWind, weather.wind_mph);
  put(kGust, weather.wind_gust_mph);
  put(kHumidity, weather.humidity_percent, humidity_known);
  // A field that arrived damaged reads as a number too, mostly 0.
  put(kRain, weather.rain, frame.IsWhole(SensorFrame::Field::kR));
  put(kLight, weather.light, frame.IsWhole(SensorFrame::Field::kLgt));
  if (frame.Cut(SensorFrame::Field::kTa) == kNoTemperature) {
    for (const Quantity quantity : {kClearSky, kAmbient, kDewPoint, kHumidity}) {
      if (sample.values.Knows(quantity)) sample.held.Put(quantity);
    }
  }
  return sample;
}

Span SpanOf(const Sample& sample) {
  return {.first = sample.time,
          .last = sample.time,
          .lowest = sample.values,
          .highest = sample.values,
          .held = sample.held,
          .conditions = sample.conditions};
}

bool Absorb(Span& span, const Sample& sample) {
  const bool follows = sample.time > span.last && sample.time - span.last <= kLongestStepMs;
  if (!follows || sample.time - span.first >= kSpanMs || sample.conditions != span.conditions ||
      !sample.values.HasSameKnownAs(span.lowest)) {
    return false;
  }
  span.last = sample.time;
  span.held.Put(sample.held);
  for (std::size_t i = 0; i < kQuantities; ++i) {
    const auto quantity = static_cast<Quantity>(i);
    // An unknown quantity (NaN) stays unknown: no comparison with it is true.
    span.lowest[quantity] = std::min(span.lowest[quantity], sample.values[quantity]);
    span.highest[quantity] = std::max(span.highest[quantity], sample.values[quantity]);
  }
  return true;
}

}  // namespace orvalis
