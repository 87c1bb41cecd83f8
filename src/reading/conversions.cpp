#include "reading/conversions.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "base/run_time_error.h"

namespace orvalis {

bool BlockAverages::Add(const SensorFrame& frame, std::int32_t block_size, WeatherState& state) {
  if (block_size != block_size_) {
    // The index may already be past a shorter block, whose end would then never be reached.
    block_size_ = block_size;
    index_ = 1;
  }
  if (!Allows(block_size)) {
    // An average that never changes would look fresh as long as frames arrive.
    state.body_known = state.ambient_known = false;
    return false;
  }
  const auto slot = static_cast<std::size_t>(index_ - 1);
  const bool body_at_once = Take(frame, slot, body_, state);
  const bool ambient_at_once = Take(frame, slot, ambient_, state);
  rain_[slot] = frame.Integer(SensorFrame::Field::kR);

  if (slot == 0 && (body_at_once || ambient_at_once)) {
    state.rain_average = rain_[slot];
    return true;
  }
  if (index_ != block_size) {
    ++index_;
    return false;
  }
  const auto average = [&](const auto& values) {
    return std::accumulate(values.begin(), values.begin() + block_size, 0.0) / block_size;
  };
  for (const Samples* samples : {&body_, &ambient_}) {
    state.*samples->average = average(samples->values);
    state.*samples->known = samples->all_read;
  }
  state.rain_average = average(rain_);
  state.first_pass = false;
  index_ = 1;
  return true;
}

bool BlockAverages::Take(const SensorFrame& frame, std::size_t slot, Samples& samples, WeatherState& state) {
  double& average = state.*samples.average;
  bool& known = state.*samples.known;
  if (slot == 0) samples.all_read = true;
  if (frame.Cut(samples.field) == kNoTemperature) {
    samples.values[slot] = average;
    samples.missing_in_a_row = std::min(samples.missing_in_a_row + 1, kMissingUntilUnknown);
    if (samples.missing_in_a_row == kMissingUntilUnknown) known = false;
    if (!known) samples.all_read = false;
    return false;
  }
  const double reading = frame.Celsius(samples.field);
  samples.values[slot] = reading;
  samples.missing_in_a_row = 0;
  if (known || state.first_pass) return false;
  // The earlier samples in this block are stale.
  std::fill_n(samples.values.begin(), slot, reading);
  samples.all_read = true;
  average = reading;
  known = true;
  return true;
}

Message AveragingCountComplaint(std::int32_t count) {
  if (BlockAverages::Allows(count)) return {};
  return Message::
      Of("The setting \"TempsAvgCount\" is %1 but must be 1 to %2; until it is corrected the ambient temperature is "
         "unknown")
          .With(count, BlockAverages::kMaxSamples);
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
  // Below 0 the logarithm is undefined, above 99 the sensor is wet.
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
