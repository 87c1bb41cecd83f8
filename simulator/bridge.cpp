#include "bridge.h"

#include <algorithm>
#include <utility>

namespace orvalis_unit {

void Bridge::Put(std::string bytes, Time now) {
  if (bytes.empty()) return;
  Time due = now + delay_;
  if (period_ > Time::zero()) due = (due / period_ + 1) * period_;
  if (!kept_.empty()) due = std::max(due, kept_.back().due);
  kept_.push_back({std::move(bytes), due});
}

std::string Bridge::TakeDue(Time now) {
  std::string due;
  while (!kept_.empty() && now >= *NextDue()) {
    due += kept_.front().bytes;
    kept_.pop_front();
  }
  return due;
}

std::optional<Time> Bridge::NextDue() const {
  if (kept_.empty()) return {};
  return std::max(kept_.front().due, stalled_until_);
}

}  // namespace orvalis_unit
