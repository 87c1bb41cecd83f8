#pragma once

#include <memory>

#include "server/weather_server.h"

namespace orvalis {

/// Whether a program in this session, this one included, is serving clients.
[[nodiscard]] bool ClassIsOffered();

/// The class factories that the automation system calls for each client. Their objects end with their clients.
class ComServer final : public WeatherServer {
 public:
  explicit ComServer(Parts parts);
  ComServer(const ComServer&) = delete;
  ComServer& operator=(const ComServer&) = delete;
  ~ComServer() override;

  /// Registers the class objects. Needs the thread's apartment, which the application object has made.
  bool Start() override;
  [[nodiscard]] bool had_clients() const override;

 private:
  class Offer;
  class Factory;

  Parts parts_;
  std::shared_ptr<Offer> offer_;  ///< the factories have it too, which clients may keep
};

}  // namespace orvalis
