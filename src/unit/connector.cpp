#include "unit/connector.h"

#include <utility>

namespace orvalis {

void Connector::Connect(Done done, const std::optional<std::string>& port) {
  if (done) waiting_.push_back(std::move(done));
  if (job_.running()) return;
  job_.Start(link_.Connect(port), [this](const std::exception_ptr& error) {
    if (error) boundary_.Report(Message::Of("connecting"), error);
    TellAll();
  });
}

void Connector::Disconnect() {
  job_.Abandon();
  link_.Disconnect();
  TellAll();
}

void Connector::TellAll() {
  for (const Done& done : std::exchange(waiting_, {})) {
    boundary_.Run(Message::Of("connecting"), [&] { done(link_.Connected()); });
  }
}

}  // namespace orvalis
