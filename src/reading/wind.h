#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace orvalis {

/// The wind figures: current value, average over the last cycles, and gust. Miles per hour.
class WindFigures {
 public:
  /// The average never looks back further than this many working cycles (two hours), whatever is asked for.
  static constexpr std::int32_t kMaxAverageCount = 3600;
  /// A gust is the highest value of so many poll ticks of one second.
  static constexpr std::int16_t kGustBlockTicks = 300;

  /// Takes the value of one working cycle. `average_count` is how many cycles the average spans, at least 1.
  void Add(double mph, std::int32_t average_count);
  /// Begins a new block for the gust: the next value is its first.
  void BeginGustBlock();

  [[nodiscard]] double current() const { return current_; }
  /// Over as many cycles as there were, until the span is filled.
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
