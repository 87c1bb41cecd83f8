#include "transmitter.h"

#include <algorithm>
#include <utility>

namespace orvalis_unit {

void Transmitter::Queue(std::string bytes, Time start, int slowdown) {
  if (bytes.empty()) return;
  queue_.push_back({std::move(bytes), 0, std::max(start, free_at_), slowdown});
  free_at_ = DueOf(queue_.back(), queue_.back().bytes.size());
}

std::string Transmitter::TakeDue(Time now) {
  std::string due;
  while (!queue_.empty()) {
    Transfer& transfer = queue_.front();
    while (transfer.sent < transfer.bytes.size() && DueOf(transfer, transfer.sent + 1) <= now) {
      due += transfer.bytes[transfer.sent++];
    }
    if (transfer.sent < transfer.bytes.size()) break;
    queue_.pop_front();
  }
  return due;
}

std::optional<Time> Transmitter::NextDue() const {
  if (queue_.empty()) return {};
  return DueOf(queue_.front(), queue_.front().sent + 1);
}

void Transmitter::Clear() {
  queue_.clear();
  free_at_ = Time{};
}

Time Transmitter::DueOf(const Transfer& transfer, std::size_t count) const {
  const bool takes_no_time = bits_per_second_ == 0 && transfer.slowdown == 1;
  if (takes_no_time) return transfer.start;
  const int speed = bits_per_second_ == 0 ? kLineSpeed : bits_per_second_;
  const auto bits = static_cast<Time::rep>(count) * kBitsPerByte * transfer.slowdown;
  // Rounded up: a byte is never early.
  return transfer.start + Time((bits * Time::period::den + speed - 1) / speed);
}

}  // namespace orvalis_unit
