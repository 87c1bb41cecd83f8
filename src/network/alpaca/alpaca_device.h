#pragma once

#include <cstdint>
#include <functional>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "network/alpaca/alpaca_call.h"
#include "network/alpaca/alpaca_clients.h"
#include "verdict/observation.h"

namespace orvalis::network {

using Json = nlohmann::ordered_json;

/// One member of a device as it is read or written.
struct AlpacaMember {
  using Handler = std::function<Json(const AlpacaCall& call)>;

  std::string name;
  Method method;
  /// What an error comes with, which is also what tells the type. Null for a PUT without a value.
  Json default_value;
  /// Returns the value, or null where there is none; throws AlpacaError or BadCall.
  Handler handler;
  std::string help = {};
};

/// What tells one device from another.
struct AlpacaIdentity {
  std::string type;  ///< "ObservingConditions"
  std::string name;
  std::string description;
  std::string unique_id;
  int interface_version;
};

/// A device, the only one of its type.
class AlpacaDevice {
 public:
  struct Parts {
    std::function<const Observation&()> observe;  ///< the account of now
    std::function<std::int64_t()> tick;           ///< milliseconds since the system started
  };

  AlpacaDevice(Parts parts, AlpacaIdentity identity) : parts_(std::move(parts)), identity_(std::move(identity)) {}
  AlpacaDevice(const AlpacaDevice&) = delete;
  AlpacaDevice& operator=(const AlpacaDevice&) = delete;
  virtual ~AlpacaDevice() = default;

  [[nodiscard]] const AlpacaIdentity& identity() const { return identity_; }
  void SetIdentity(std::string name, std::string unique_id);
  /// The members of the device, those that all devices have included. They call it as long as they exist.
  [[nodiscard]] std::vector<AlpacaMember> Members();

 protected:
  /// One name and value of the device's state.
  [[nodiscard]] static Json StateEntry(std::string_view name, Json value);
  /// The time of a state: ISO 8601, in UTC.
  [[nodiscard]] static Json TimeEntry(std::int64_t utc_milliseconds);

  [[nodiscard]] const Observation& Now() const { return parts_.observe(); }
  [[nodiscard]] std::int64_t Tick() const { return parts_.tick(); }
  [[nodiscard]] bool IsConnected(const AlpacaCall& call) { return clients_.IsConnected(call, Tick()); }

 private:
  [[nodiscard]] virtual std::vector<AlpacaMember> OwnMembers() = 0;
  [[nodiscard]] virtual Json State(const AlpacaCall& call) = 0;
  [[nodiscard]] virtual std::vector<std::string> Actions() const { return {}; }
  /// `action` is one of `Actions`.
  [[nodiscard]] virtual Json Act(const std::string& action) { return action; }

  [[nodiscard]] Json CallAction(const AlpacaCall& call);
  Json SetConnected(const AlpacaCall& call, bool connected);

  Parts parts_;
  AlpacaIdentity identity_;
  AlpacaClients clients_;
};

}  // namespace orvalis::network
