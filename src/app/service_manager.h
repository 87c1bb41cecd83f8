#pragma once

#include <string>

namespace orvalis {

/// What the system watches a program by that it runs as a service: one that hangs or crashes is started again.
class ServiceManager {
 public:
  virtual ~ServiceManager() = default;
  /// Whether the program runs as a service.
  [[nodiscard]] virtual bool Watches() const = 0;
  /// The start is complete. From here on the event loop tells, by itself and as often as is asked for, that it runs.
  virtual void Started() = 0;
  virtual void Stopping() = 0;
  /// How things are, in one line, for whoever asks the system about the service.
  virtual void Tell(const std::string& status) = 0;
};

}  // namespace orvalis
