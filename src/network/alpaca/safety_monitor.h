#pragma once

#include "network/alpaca/alpaca_device.h"

namespace orvalis::network {

/// The verdict as an Alpaca SafetyMonitor. `IsSafe` is the verdict for every caller and never an error: widely used
/// clients keep the last state, safe included, when they get an error, and some ask without having connected.
class SafetyMonitor : public AlpacaDevice {
 public:
  explicit SafetyMonitor(Parts parts);

 private:
  std::vector<AlpacaMember> OwnMembers() override;
  Json State(const AlpacaCall& call) override;
  std::vector<std::string> Actions() const override;
  Json Act(const std::string& action) override;
};

}  // namespace orvalis::network
