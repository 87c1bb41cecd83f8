#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include "history/history.h"
#include "history/sample.h"

namespace orvalis {

/// A point of a curve. A value that is not a number interrupts it.
struct CurvePoint {
  double time;  ///< milliseconds since 1970-01-01 UTC
  double value;
};

/// The lowest and the highest value within a span.
struct ValueLimits {
  double lowest;
  double highest;
};
/// A value as it is taken from the history; nothing where it is unknown.
using CurveValue = std::function<std::optional<ValueLimits>(const Span& span)>;
[[nodiscard]] CurveValue ValueOf(Quantity quantity);

/// The curve of `value` for a picture `columns` wide that shows `range`: at most the first, last, lowest and highest
/// value of each column, so that short gusts stay visible and drawing stays fast. It has gaps where nothing is known,
/// if wide enough to be seen, and extends to the neighbours of the range.
[[nodiscard]] std::vector<CurvePoint> CurvePoints(const History& history, const CurveValue& value, TimeRange range,
                                                  int columns);
[[nodiscard]] inline std::vector<CurvePoint> CurvePoints(const History& history, Quantity quantity, TimeRange range,
                                                         int columns) {
  return CurvePoints(history, ValueOf(quantity), range, columns);
}

}  // namespace orvalis
