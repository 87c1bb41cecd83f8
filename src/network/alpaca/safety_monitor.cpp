#include "network/alpaca/safety_monitor.h"

#include <utility>

#include "verdict/explanation.h"

namespace orvalis::network {

SafetyMonitor::SafetyMonitor(Parts parts)
    : AlpacaDevice(std::move(parts), {.type = "SafetyMonitor",
                                      .name = "",
                                      .description = "Orvalis: whether the weather is safe for an open roof",
                                      .unique_id = "",
                                      .interface_version = 3}) {}

std::vector<AlpacaMember> SafetyMonitor::OwnMembers() {
  return {{.name = "issafe",
           .method = Method::kGet,
           .default_value = false,
           .handler = [this](const AlpacaCall&) { return Now().verdict.safe; },
           .help = "whether it is safe"}};
}

Json SafetyMonitor::State(const AlpacaCall& /*call*/) {
  const Observation& now = Now();
  return {StateEntry("IsSafe", now.verdict.safe), TimeEntry(now.time)};
}

std::vector<std::string> SafetyMonitor::Actions() const { return {"UnsafeReasons"}; }

Json SafetyMonitor::Act(const std::string& /*action*/) {
  const Observation& now = Now();
  Json reasons = Json::array();
  now.verdict.reasons.ForEach([&](Reason reason) {
    reasons.push_back({{"name", Name(reason)}, {"text", Explain(reason, now).English()}});
  });
  return reasons.dump();
}

}  // namespace orvalis::network
