#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvalis {

/// The wind figures: current value, average over the last cycles, and gust. Miles per hour.
class WindFigures {
 public:
  /// The longest average, in working cycles (two hours).
  static constexpr std::int32_t kMaxAverageCount = 3600;
  /// A gust is the highest value in this many poll ticks of one second.
  static constexpr std::int16_t kGustBlockTicks = 300;

  /// Adds the value of one working cycle. `average_count` is the number of cycles in the average, at least 1.
  void Add(double mph, std::int32_t average_count);
  /// Starts a new gust block: the next value is its first.
  void BeginGustBlock();

  [[nodiscard]] double current() const { return current_; }
  /// Over the available cycles until the span is full.
  [[nodiscard]] double average() const;
  /// 0.0 until the first value.
  [[nodiscard]] double gust() const;

 private:
  static constexpr double kBelowAnyWind = -10.0;

  double current_ = 0;
  double gust_reference_ = kBelowAnyWind;
  std::vector<double> recent_;  ///< a ring of the last values
  std::size_t span_ = 1;
  std::size_t next_ = 0;
};

/// Miles per hour from the sensor count and the setting "WindMultiplier".
[[nodiscard]] constexpr double WindMph(double count, std::int32_t multiplier) { return count * multiplier / 10; }

}  // namespace orvalis
