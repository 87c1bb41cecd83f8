#pragma once

#include <deque>
#include <optional>
#include <string>

#include "text.h"

namespace orvalis_unit {

// A device between the unit and the program, such as a networked serial bridge: it delays the unit's answers without
// changing their order. By default it passes everything on at once.
class Bridge {
 public:
  // Delays everything from now on.
  void SetDelay(Time delay) { delay_ = delay; }
  // Releases gathered bytes once per `period`, counted from the start; 0: at any time.
  void SetBursts(Time period) { period_ = period; }
  // Releases nothing before `until`.
  void StallUntil(Time until) { stalled_until_ = until; }

  void Put(std::string bytes, Time now);
  std::string TakeDue(Time now);
  // When bytes are released next; nothing while it is empty.
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
