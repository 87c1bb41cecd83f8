#pragma once

#include <functional>
#include <memory>

namespace orvalis {

/// Turns the system's requests to end the program into calls from the event loop, as long as it lives. One at a time.
/// Implemented once per operating system.
///
/// No signal is lost from the very start: where the system allows it, signals before `ExitImmediately` or
/// `RestoreDefault` are held back until then. On Linux a hang-up and an interrupt that were ignored before stay
/// ignored.
class StopSignals {
 public:
  struct Calls {
    std::function<void()> stop;  ///< end the event loop; data is saved after it
    /// Save everything now: the system ends the process as soon as this returns.
    std::function<void()> session_ended;
  };

  explicit StopSignals(Calls calls);
  StopSignals(const StopSignals&) = delete;
  StopSignals& operator=(const StopSignals&) = delete;
  /// Later signals end the process immediately: everything has been saved.
  ~StopSignals();

  /// To be called first. While there is no `StopSignals`, a request to end exits immediately with `exit_code`, which is
  /// safe as long as nothing has been started.
  static void ExitImmediately(int exit_code);
  /// The alternative: the system's default handling, for a program that runs a single command and must not appear to
  /// have completed it.
  static void RestoreDefault();

 private:
  class Watch;
  std::unique_ptr<Watch> watch_;
};

}  // namespace orvalis
