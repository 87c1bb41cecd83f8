#pragma once

#include <functional>
#include <memory>
#include <string>

#include "app/observer.h"
#include "server/observation_members.h"
#include "server/weather.h"

namespace orvalis {

/// Gives each client its own `Weather`, over the system's IPC, and the observation.
class WeatherServer {
 public:
  struct Parts {
    /// Creates the object of a new client, which the traffic window calls `caller`. An exception is passed to the
    /// client.
    std::function<std::unique_ptr<Weather>(std::string caller)> create;
    const ObservationReader& observation;
    /// Called when clients cannot connect, and when they can again.
    std::function<void(const std::string&)> record;
    /// Whether the program was started for clients and ends with the last of them.
    bool ends_with_last_client = false;
  };

  virtual ~WeatherServer() = default;

  /// Publishes the object. Returns whether clients can connect.
  virtual bool Start() = 0;
  /// Whether any client has connected.
  [[nodiscard]] virtual bool had_clients() const = 0;
  /// Tells clients how things are, where the IPC can. To be called at each update of the observer.
  virtual void Announce(const Observation& /*now*/, const Observer::News& /*news*/) {}
};

}  // namespace orvalis
