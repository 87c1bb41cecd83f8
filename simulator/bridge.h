#pragma once

#include <deque>
#include <optional>
#include <string>

#include "text.h"

namespace orvalis_unit {

// What may lie between the unit and the program, such as a serial bridge in a network: it keeps the unit's answers for
// a while, and never changes their order. Without being told otherwise it passes everything on at once.
class Bridge {
 public:
  // Everything from now on comes out so much later.
  void SetDelay(Time delay) { delay_ = delay; }
  // What has gathered comes out once in each `period`, counted from the start; 0: at any time.
  void SetBursts(Time period) { period_ = period; }
  // Nothing comes out before `until`.
  void StallUntil(Time until) { stalled_until_ = until; }

  void Put(std::string bytes, Time now);
  std::string TakeDue(Time now);
  // When something comes out next; nothing while it is empty.
  std::optional<Time> NextDue() const;
  void Clear() { kept_.clear(); }

 private:
  struct Kept {
    std::string bytes;
    Time due;
  };

  Time delay_{};
  Time period_{};
  Time stalled_until_{};
  std::deque<Kept> kept_;
};

}  // namespace orvalis_unit
