#include "acquisition/connector.h"

#include <utility>

namespace orvalis {

void Connector::Connect(Done done) {
  if (done) waiting_.push_back(std::move(done));
  if (job_.running()) return;
  job_.Start(link_.Connect(), [this](const std::exception_ptr& error) {
    if (error) boundary_.Report("connecting", error);
    for (const Done& waiting : std::exchange(waiting_, {})) waiting(link_.Connected());
  });
}

}  // namespace orvalis
