#pragma once

#include <exception>
#include <functional>
#include <vector>

#include "app/setup_routine.h"
#include "base/error_boundary.h"
#include "base/event_loop.h"

namespace orvalis {

/// Everyone who asks for the setup dialog: the panel's button, and clients, who are answered when it is closed.
class SetupRequests {
 public:
  /// Gets what kept the dialog from being shown, or nothing.
  using Closed = std::function<void(const std::exception_ptr& failure)>;

  SetupRequests(SetupRoutine& routine, EventLoop& loop, ErrorBoundary& boundary)
      : routine_(routine), loop_(loop), boundary_(boundary) {}

  /// Runs the dialog, or brings the one that is open to the front. Returns when it is closed, or open already.
  void Run();
  /// The same for a client, as soon as its call has been taken.
  void RunFor(Closed closed);

 private:
  SetupRoutine& routine_;
  EventLoop& loop_;
  ErrorBoundary& boundary_;
  std::vector<Closed> waiting_;
};

}  // namespace orvalis
