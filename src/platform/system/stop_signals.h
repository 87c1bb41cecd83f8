#pragma once

#include <functional>
#include <memory>

namespace orvalis {

/// Turns the system's ways of asking a program to end into calls from the event loop, as long as it lives. One at a
/// time. Implemented once per operating system.
class StopSignals {
 public:
  struct Calls {
    std::function<void()> stop;  ///< end the event loop; what is to be kept is kept after it
    /// Keep what is to be kept now: the system ends the process as soon as this returns.
    std::function<void()> session_ends;
  };

  explicit StopSignals(Calls calls);
  StopSignals(const StopSignals&) = delete;
  StopSignals& operator=(const StopSignals&) = delete;
  ~StopSignals();

 private:
  class Watch;
  std::unique_ptr<Watch> watch_;
};

}  // namespace orvalis
