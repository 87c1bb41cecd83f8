#pragma once

#include <deque>
#include <optional>
#include <string>

#include "text.h"

namespace orvalis_unit {

// The sending side of the line, with the time at which each byte has left. Times are computed from the start of each
// answer, not from byte to byte, so that late wake-ups do not accumulate.
class Transmitter {
 public:
  // bits_per_second == 0: bytes take no time, unless they are slowed down (then relative to kLineSpeed).
  explicit Transmitter(int bits_per_second) : bits_per_second_(bits_per_second) {}

  static constexpr int kLineSpeed = 9600;
  static constexpr int kBitsPerByte = 10;  // start bit, eight data bits, stop bit

  // Sends `bytes` from `start` on, or when everything queued before has left. Each byte takes `slowdown` times its
  // normal time.
  void Queue(std::string bytes, Time start, int slowdown = 1);

  // Takes the bytes whose last bit has left the line by `now`.
  std::string TakeDue(Time now);

  // When the next byte will have left; nothing when the queue is empty.
  std::optional<Time> NextDue() const;

  // The number of answers not yet completely sent.
  std::size_t Waiting() const { return queue_.size(); }

  // Discards everything that has not left.
  void Clear();

 private:
  struct Transfer {
    std::string bytes;
    std::size_t sent;
    Time start;
    int slowdown;
  };

  // When the first `count` bytes have left.
  Time DueOf(const Transfer& transfer, std::size_t count) const;

  int bits_per_second_;
  std::deque<Transfer> queue_;
  Time free_at_{};
};

}  // namespace orvalis_unit
