#include "unit/lost_adapter.h"

#include <array>

namespace orvalis {
namespace {

/// Seconds before each attempt. After the last one it takes the two minutes of every reconnect.
constexpr std::array kPauses{0, 3, 10, 30};
/// A connection that held for so many seconds was not broken by a loose plug.
constexpr int kSteady = 60;

}  // namespace

void LostAdapter::NoteConnected() {
  if (session_ != parts_.link.session()) {
    session_ = parts_.link.session();
    steady_seconds_ = 0;
    const std::optional<PresentPort> port = parts_.ports.Find(parts_.link.port());
    adapter_ = port ? Distinguished(port->adapter, parts_.ports) : SerialAdapter{};
  }
  if (steady_seconds_ < kSteady && ++steady_seconds_ == kSteady) attempts_ = 0;
}

std::optional<std::string> LostAdapter::DueAt() {
  if (attempts_ == kPauses.size() || ++waited_ < kPauses[attempts_]) return std::nullopt;
  std::optional<std::string> port = Place();
  if (!port) return std::nullopt;
  ++attempts_;
  waited_ = 0;
  return port;
}

std::optional<std::string> LostAdapter::Place() const {
  const auto& loss = parts_.link.LastLoss();
  if (!loss) return std::nullopt;
  return FindAgain(loss->port, loss->session == session_ ? adapter_ : SerialAdapter{}, parts_.ports);
}

}  // namespace orvalis
