#pragma once

#include <signal.h>

namespace orvalis_unit {

// Turns SIGINT, SIGTERM and SIGHUP into a flag that a waiting loop sees: they are held back all the time but while
// the loop sleeps, so that none slips in between a look at the flag and the sleep. One object a process.
class StopSignals {
 public:
  StopSignals();
  ~StopSignals();

  StopSignals(const StopSignals&) = delete;
  StopSignals& operator=(const StopSignals&) = delete;

  static bool Arrived();

  // The mask to sleep with.
  const sigset_t& SleepMask() const { return outside_; }

 private:
  sigset_t outside_{};
};

}  // namespace orvalis_unit
