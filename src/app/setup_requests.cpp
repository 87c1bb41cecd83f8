#include "app/setup_requests.h"

#include <utility>

namespace orvalis {

void SetupRequests::Run() {
  std::exception_ptr failure;
  boundary_.RunToEnd(Message::Of("running the setup"), [&] {
    try {
      routine_.Run();
    } catch (...) {
      failure = std::current_exception();  // the waiting clients get the error too
      throw;
    }
  });
  if (routine_.open()) return;  // it was open already and came to the front
  for (const Closed& closed : std::exchange(waiting_, {})) closed(failure);
}

void SetupRequests::RunFor(Closed closed) {
  waiting_.push_back(std::move(closed));
  loop_.CallAfter({}, [this] { Run(); });
}

}  // namespace orvalis
