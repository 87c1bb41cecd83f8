#pragma once

#include <functional>
#include <memory>

namespace orvalis {

/// Turns the system's ways of asking a program to end into calls from the event loop, as long as it lives. One at a
/// time. Implemented once per operating system.
///
/// A program that holds this class loses no signal from its first moment on: where the system can be told so early,
/// what comes before `ExitImmediately` or `RestoreDefault` waits for them.
class StopSignals {
 public:
  struct Calls {
    std::function<void()> stop;  ///< end the event loop; what is to be kept is kept after it
    /// Keep what is to be kept now: the system ends the process as soon as this returns.
    std::function<void()> session_ended;
  };

  explicit StopSignals(Calls calls);
  StopSignals(const StopSignals&) = delete;
  StopSignals& operator=(const StopSignals&) = delete;
  /// What comes afterwards ends the process at once: there is nothing left to keep.
  ~StopSignals();

  /// To be called first of all. While no `StopSignals` lives, being asked to end ends the process at once with
  /// `exit_code`, which is in order as long as nothing has been begun.
  static void ExitImmediately(int exit_code);
  /// The other choice: what the system does to every program. For one that does a single thing and must not be taken
  /// to have done it.
  static void RestoreDefault();

 private:
  class Watch;
  std::unique_ptr<Watch> watch_;
};

}  // namespace orvalis
