#include "history/curve.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace orvalis {
namespace {

class CurveBuilder {
 public:
  CurveBuilder(TimeRange range, int columns)
      : from_(static_cast<double>(range.from)),
        column_ms_(std::max(1.0, static_cast<double>(range.to - range.from) / columns)) {}

  void Interrupt() { interrupted_ = true; }

  void Add(CurvePoint point) {
    const double column = std::floor((point.time - from_) / column_ms_);
    if (filled_ && bucket_.column == column) {
      // A gap within one column cannot be seen.
      bucket_.Take(point);
    } else {
      Flush();
      if (interrupted_ && !points_.empty()) Break();
      bucket_ = {column, point, point, point, point};
      filled_ = true;
    }
    interrupted_ = false;
  }

  [[nodiscard]] double last_value() const { return bucket_.last.value; }

  std::vector<CurvePoint> Finish() {
    Flush();
    WidenLonePoint();
    return std::move(points_);
  }

 private:
  struct Bucket {
    void Take(CurvePoint point) {
      if (point.value < lowest.value) lowest = point;
      if (point.value > highest.value) highest = point;
      last = point;
    }
    double column = 0;
    CurvePoint first{}, lowest{}, highest{}, last{};
  };

  void Flush() {
    if (!filled_) return;
    const bool falls = bucket_.highest.time < bucket_.lowest.time;
    for (const CurvePoint& point : {bucket_.first, falls ? bucket_.highest : bucket_.lowest,
                                    falls ? bucket_.lowest : bucket_.highest, bucket_.last}) {
      const bool same = piece_size_ > 0 && points_.back().time == point.time && points_.back().value == point.value;
      if (same) continue;
      points_.push_back(point);
      ++piece_size_;
    }
    filled_ = false;
  }

  void Break() {
    WidenLonePoint();
    points_.push_back({points_.back().time, std::numeric_limits<double>::quiet_NaN()});
    piece_size_ = 0;
  }

  /// A line through one point would not be drawn.
  void WidenLonePoint() {
    if (piece_size_ != 1) return;
    points_.push_back({points_.back().time + column_ms_, points_.back().value});
  }

  double from_;
  double column_ms_;
  std::vector<CurvePoint> points_;
  Bucket bucket_;
  bool filled_ = false;  ///< the bucket holds points
  bool interrupted_ = false;
  std::size_t piece_size_ = 0;
};

}  // namespace

CurveValue ValueOf(Quantity quantity) {
  return [quantity](const Span& span) -> std::optional<ValueLimits> {
    if (!span.lowest.Knows(quantity)) return std::nullopt;
    return ValueLimits{.lowest = span.lowest[quantity], .highest = span.highest[quantity]};
  };
}

std::vector<CurvePoint> CurvePoints(const History& history, const CurveValue& value, TimeRange range, int columns) {
  CurveBuilder builder(range, std::max(1, columns));
  std::optional<std::int64_t> end;
  history.Visit(range, [&](const Span& span) {
    if (end && span.first - *end > kLongestStepMs) builder.Interrupt();
    end = span.last;
    const std::optional<ValueLimits> limits = value(span);
    if (!limits) {
      builder.Interrupt();
      return;
    }
    const double middle = (static_cast<double>(span.first) + static_cast<double>(span.last)) / 2;
    const auto [lowest, highest] = *limits;
    // The end nearer to the curve so far comes first, to avoid a sawtooth.
    const bool from_below = std::abs(builder.last_value() - lowest) < std::abs(builder.last_value() - highest);
    builder.Add({middle, from_below ? lowest : highest});
    if (lowest != highest) builder.Add({middle, from_below ? highest : lowest});
  });
  return builder.Finish();
}

}  // namespace orvalis
