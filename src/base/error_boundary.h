#pragma once

#include <exception>
#include <functional>
#include <map>
#include <string>

#include "base/event_list.h"
#include "base/message.h"
#include "base/once_until_mended.h"

namespace orvalis {

/// The last stop for errors from timers and clicks: they go to the status line and the event list, and the program
/// continues.
class ErrorBoundary {
 public:
  /// `status` is the panel's status line, which others write too.
  ErrorBoundary(Message& status, EventList& events) : status_(status), events_(events) {}

  /// Reports `error`, which happened while `doing`, "polling the unit". An error that recurs each cycle is listed
  /// once, until `Succeeded` is called.
  void Report(Phrase doing, const std::exception_ptr& error);
  /// The same work succeeded: an earlier error message is cleared from the status line.
  void Succeeded(Phrase doing);

  /// Runs `work`, which is complete when it returns, and reports its failure or success.
  template <typename Work>
  void RunToEnd(Phrase doing, Work work) {
    Run(doing, [&] {
      work();
      Succeeded(doing);
    });
  }
  /// Runs `work`, which may continue after it returns, and reports what it throws.
  template <typename Work>
  void Run(Phrase doing, Work work) {
    try {
      work();
    } catch (...) {
      Report(doing, std::current_exception());
    }
  }

 private:
  Message& status_;
  EventList& events_;
  std::map<std::string, OnceUntilMended, std::less<>> standing_;  ///< the last error of each kind of work
};

}  // namespace orvalis
