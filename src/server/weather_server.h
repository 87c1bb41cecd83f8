#pragma once

#include <functional>
#include <memory>
#include <string>

#include "server/weather.h"

namespace orvalis {

/// Gives each client a `Weather` of its own, over the system's way for programs to call each other.
class WeatherServer {
 public:
  struct Parts {
    /// Makes the object of a new client. What it throws is the answer to the client.
    std::function<std::unique_ptr<Weather>()> create;
    /// Told why clients cannot come, and that they can again.
    std::function<void(const std::string&)> record;
    /// Whether the program is there for its clients alone, and ends with the last of them.
    bool ends_with_last_client = false;
  };

  virtual ~WeatherServer() = default;

  /// Offers the object. Returns whether clients can come.
  virtual bool Start() = 0;
  /// Whether a client ever came.
  [[nodiscard]] virtual bool had_clients() const = 0;
};

}  // namespace orvalis
