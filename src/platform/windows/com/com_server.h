#pragma once

#include "server/weather_server.h"

namespace orvalis {

/// Whether a program in this session, this one included, is serving clients.
[[nodiscard]] bool ClassIsOffered();

/// The class factory that COM calls for each client. An object lives as long as its client holds it.
class ComServer final : public WeatherServer {
 public:
  explicit ComServer(Parts parts);
  ComServer(const ComServer&) = delete;
  ComServer& operator=(const ComServer&) = delete;
  ~ComServer() override;

  /// Registers the class object. Needs the thread's apartment, which the application object creates.
  bool Start() override;
  [[nodiscard]] bool had_clients() const override;

 private:
  class Factory;

  Parts parts_;
  Factory* factory_ = nullptr;  ///< one reference is ours
};

}  // namespace orvalis
