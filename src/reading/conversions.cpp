#include "reading/conversions.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "base/run_time_error.h"

namespace orvalis {

bool BlockAverages::Add(const SensorFrame& frame, std::int32_t block_size, WeatherState& state) {
  if (block_size != block_size_) {
    // A shorter block could already be behind the index, and the end would never be met.
    block_size_ = block_size;
    index_ = 1;
  }
  if (index_ > kMaxSamples) {
    index_ = 1;
    throw RunTimeError(RunTimeError::kSubscriptOutOfRange,
                       "the averages take up to 300 samples, and TempsAvgCount asks for " + std::to_string(block_size));
  }
  const auto slot = static_cast<std::size_t>(index_ - 1);
  const auto take = [&](SensorFrame::Field field, Samples& samples, double average, bool& known) {
    if (slot == 0) samples.all_read = true;
    const bool missing = frame.Cut(field) == kNoTemperature;
    samples.values[slot] = missing ? average : frame.Celsius(field);
    samples.missing_in_a_row = missing ? std::min(samples.missing_in_a_row + 1, kMissingUntilUnknown) : 0;
    if (samples.missing_in_a_row == kMissingUntilUnknown) known = false;
    if (missing && !known) samples.all_read = false;
  };
  take(SensorFrame::Field::kTtp, body_, state.body_celsius, state.body_known);
  take(SensorFrame::Field::kTa, ambient_, state.ambient_celsius, state.ambient_known);
  rain_.values[slot] = frame.Integer(SensorFrame::Field::kR);

  if (index_ != block_size) {
    ++index_;
    return false;
  }
  const auto average = [&](const Samples& samples) {
    return std::accumulate(samples.values.begin(), samples.values.begin() + block_size, 0.0) / block_size;
  };
  state.body_celsius = average(body_);
  state.ambient_celsius = average(ambient_);
  state.rain_average = average(rain_);
  state.body_known = body_.all_read;
  state.ambient_known = ambient_.all_read;
  index_ = 1;
  return true;
}

double RelativeHumidity(double count, double ambient_celsius, double selector) {
  const double volts = count / 1024 * 5.02;
  const double sensor_humidity = (volts - 0.958) / 0.034;
  const double kelvin = ambient_celsius + 273;
  const double offset = selector < 2.0 ? 1.1305 : 1.0305;
  const double divisor = kelvin * 4.4e-5 + offset - kelvin * kelvin * 1.1e-6;
  if (divisor == 0) throw RunTimeError(RunTimeError::kDivisionByZero, "no humidity at this ambient temperature");
  return sensor_humidity / divisor;
}

double DewPoint(double humidity_percent, double ambient_celsius) {
  // Below 0 there is no logarithm, above 99 the sensor is wet.
  if (humidity_percent < 0 || humidity_percent > 99) return ambient_celsius;
  if (humidity_percent == 0) throw RunTimeError(RunTimeError::kInvalidCall, "no dew point at 0 percent humidity");
  constexpr double kMagnusFactor = 17.62;
  constexpr double kMagnusCelsius = 243.12;
  constexpr double kLn10 = 2.30258509299405;
  const double magnus_divisor = kMagnusCelsius + ambient_celsius;
  if (magnus_divisor == 0) throw RunTimeError(RunTimeError::kDivisionByZero, "no dew point at this temperature");
  const double g = (std::log(humidity_percent) / kLn10 - 2) / 0.4343 + kMagnusFactor * ambient_celsius / magnus_divisor;
  if (g == kMagnusFactor) throw RunTimeError(RunTimeError::kDivisionByZero, "no dew point at this temperature");
  return kMagnusCelsius * g / (kMagnusFactor - g);
}

double ClearSkyTemperature(double dew_point_celsius, double ambient_celsius) {
  const double emissivity = dew_point_celsius * 0.0056 + 0.711;
  if (emissivity < 0) {
    throw RunTimeError(RunTimeError::kInvalidCall, "no clear-sky temperature for so low a dew point");
  }
  // 273.12, not 273.15: the unit's own sky model was fitted with it.
  constexpr double kKelvinOffset = 273.12;
  return std::pow(emissivity, 0.25) * (ambient_celsius + kKelvinOffset) - kKelvinOffset;
}

}  // namespace orvalis
