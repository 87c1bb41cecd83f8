#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "config/station.h"
#include "network/alpaca/alpaca_device.h"
#include "network/alpaca/observing_conditions.h"
#include "network/alpaca/safety_monitor.h"
#include "network/http/resources.h"

namespace orvalis::network {

/// The Alpaca devices, what manages them, and their pages, as resources.
class AlpacaServer {
 public:
  explicit AlpacaServer(const AlpacaDevice::Parts& parts) : observing_conditions_(parts), safety_monitor_(parts) {}
  AlpacaServer(const AlpacaServer&) = delete;
  AlpacaServer& operator=(const AlpacaServer&) = delete;

  /// Adds all resources; they use this object.
  void AddTo(Resources& resources);
  /// Who answers, from now on.
  void SetStation(const Station& station);
  /// To be called with every new account.
  void Note(const Observation& now) { observing_conditions_.Note(now); }

 private:
  void AddDevice(AlpacaDevice& device, Resources& resources);
  void AddManagement(Resources& resources);
  void AddPages(Resources& resources);
  /// Calls a member and puts what it returns or throws into the answer.
  [[nodiscard]] HttpResponse Call(const AlpacaMember& member, const HttpRequest& request);
  [[nodiscard]] Json DeviceList() const;
  [[nodiscard]] std::uint32_t NextTransaction();

  ObservingConditions observing_conditions_;
  SafetyMonitor safety_monitor_;
  std::array<AlpacaDevice*, 2> devices_{&observing_conditions_, &safety_monitor_};
  std::string station_name_;
  std::uint32_t last_transaction_ = 0;
};

}  // namespace orvalis::network
