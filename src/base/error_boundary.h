#pragma once

#include <exception>
#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "base/event_list.h"
#include "base/once_until_mended.h"

namespace orvalis {

/// Where errors of timers and clicks end: on the status line and in the event list. The program goes on.
class ErrorBoundary {
 public:
  /// `status` is the line that a person reads, which others write too.
  ErrorBoundary(std::string& status, EventList& events) : status_(status), events_(events) {}

  /// Reports `error`, which happened while `doing` ("polling the unit"). An error that comes again each cycle is
  /// listed once; `Succeeded` makes it news again.
  void Report(std::string_view doing, const std::exception_ptr& error);
  /// The same work went well: a message of a former failure leaves the status line.
  void Succeeded(std::string_view doing);

  /// Runs `work`, which is over when it returns: reports what it throws, and otherwise says that it succeeded.
  template <typename Work>
  void RunWhole(std::string_view doing, Work work) {
    Run(doing, [&] {
      work();
      Succeeded(doing);
    });
  }
  /// Runs `work`, which may go on after it returned, and reports what it throws.
  template <typename Work>
  void Run(std::string_view doing, Work work) {
    try {
      work();
    } catch (...) {
      Report(doing, std::current_exception());
    }
  }

 private:
  std::string& status_;
  EventList& events_;
  std::map<std::string, OnceUntilMended, std::less<>> standing_;  ///< the last error of each kind of work
};

}  // namespace orvalis
