#pragma once

#include <exception>
#include <functional>
#include <vector>

#include "app/setup_routine.h"
#include "base/error_boundary.h"
#include "base/event_loop.h"

namespace orvalis {

/// Requests for the setup dialog from the panel's button and from clients, which are answered when it is closed.
class SetupRequests {
 public:
  /// Receives why the dialog could not be shown, or null.
  using Closed = std::function<void(const std::exception_ptr& failure)>;

  SetupRequests(SetupRoutine& routine, EventLoop& loop, ErrorBoundary& boundary)
      : routine_(routine), loop_(loop), boundary_(boundary) {}

  /// Runs the dialog and returns when it is closed; if it is already open, brings it to the front and returns.
  void Run();
  /// The same for a client, right after its call returned to the event loop.
  void RunFor(Closed closed);

 private:
  SetupRoutine& routine_;
  EventLoop& loop_;
  ErrorBoundary& boundary_;
  std::vector<Closed> waiting_;
};

}  // namespace orvalis
