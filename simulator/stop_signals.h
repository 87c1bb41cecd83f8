#pragma once

#include <signal.h>

namespace orvalis_unit {

// Turns SIGINT, SIGTERM and SIGHUP into a flag for a waiting loop. They are blocked except while the loop sleeps, so
// that none is lost between checking the flag and sleeping. One object per process.
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
