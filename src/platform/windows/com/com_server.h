#pragma once

#include "server/weather_server.h"

namespace orvalis {

/// Whether a program of this session, this one included, gives objects to clients now.
[[nodiscard]] bool ClassIsOffered();

/// The class factory that the automation system calls for each client. Its objects end with their clients.
class ComServer final : public WeatherServer {
 public:
  explicit ComServer(Parts parts);
  ComServer(const ComServer&) = delete;
  ComServer& operator=(const ComServer&) = delete;
  ~ComServer() override;

  /// Registers the class object. Needs the thread's apartment, which the application object has made.
  bool Start() override;
  [[nodiscard]] bool had_clients() const override;

 private:
  class Factory;

  Parts parts_;
  Factory* factory_ = nullptr;  ///< holds one reference of ours
};

}  // namespace orvalis
