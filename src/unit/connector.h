#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/error_boundary.h"
#include "base/task.h"
#include "unit/sensor_link.h"

namespace orvalis {

/// Connects and disconnects for everybody who asks: the panel's button, the start, the reconnect timer, clients.
class Connector {
 public:
  /// Told whether the link is connected now.
  using Done = std::function<void(bool connected)>;

  /// Told before the link opens its port: `port`, or none for the chosen one.
  using Before = std::function<void(const std::optional<std::string>& port)>;

  Connector(SensorLink& link, ErrorBoundary& boundary) : link_(link), boundary_(boundary) {}

  /// For whoever may have the port open.
  void BeforeConnect(Before before) { before_ = std::move(before); }

  /// Starts a connect, or joins the one under way. `done` is called once, from the event loop or, when nothing needs to
  /// be waited for, before this returns. It must not connect. `port` is where the unit is now, if not at the chosen
  /// port.
  void Connect(Done done = {}, const std::optional<std::string>& port = std::nullopt);
  /// Closes the link and ends a connect under way, at once: whoever waits for it is told, and the next connect is one
  /// of its own. Not from inside `done`.
  void Disconnect();

  [[nodiscard]] bool connecting() const { return job_.running(); }

 private:
  void TellAll();

  SensorLink& link_;
  ErrorBoundary& boundary_;
  std::vector<Done> waiting_;
  Before before_;
  Job job_;
};

}  // namespace orvalis
