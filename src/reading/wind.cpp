#include "reading/wind.h"

#include <algorithm>
#include <numeric>

namespace orvalis {

void WindFigures::Add(double mph, std::int32_t average_count) {
  const auto span = static_cast<std::size_t>(std::clamp(average_count, 1, kMaxAverageCount));
  if (span != span_ || recent_.capacity() < span) {
    recent_.clear();
    recent_.reserve(span);
    span_ = span;
    next_ = 0;
  }
  if (recent_.size() < span_) {
    recent_.push_back(mph);
  } else {
    recent_[next_] = mph;
  }
  next_ = (next_ + 1) % span_;
  current_ = mph;
  gust_reference_ = std::max(gust_reference_, mph);
}

void WindFigures::BeginGustBlock() { gust_reference_ = kBelowAnyWind; }

double WindFigures::average() const {
  if (recent_.empty()) return 0;
  // Summed from scratch each time, so that rounding errors do not accumulate over months.
  return std::accumulate(recent_.begin(), recent_.end(), 0.0) / static_cast<double>(recent_.size());
}

double WindFigures::gust() const { return gust_reference_ == kBelowAnyWind ? 0.0 : gust_reference_; }

}  // namespace orvalis
