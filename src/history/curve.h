#pragma once

#include <cstdint>
#include <vector>

#include "history/history.h"
#include "history/sample.h"

namespace orvalis {

/// A point of a curve. A value that is not a number interrupts it.
struct CurvePoint {
  double time;  ///< milliseconds since 1970-01-01 UTC
  double value;
};

/// The curve of `quantity` for a picture that is `columns` wide and shows `range`: at most the first, the last, the
/// lowest and the highest value of each column, so that neither a short gust nor the picture's speed is lost. It is
/// interrupted where nothing is known, if that is wide enough to be seen, and runs on to the neighbours of the range.
[[nodiscard]] std::vector<CurvePoint> CurvePoints(const History& history, Quantity quantity, TimeRange range,
                                                  int columns);

}  // namespace orvalis
