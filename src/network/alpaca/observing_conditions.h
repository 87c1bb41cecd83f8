#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

#include "network/alpaca/alpaca_device.h"

namespace orvalis::network {

/// The readings as Alpaca ObservingConditions. A value that is unknown or not of now is an error, never an older value.
class ObservingConditions : public AlpacaDevice {
 public:
  explicit ObservingConditions(Parts parts);

  /// Remembers when each value was known last. To be called with every new account.
  void Note(const Observation& now);

 private:
  /// How many values the interface has.
  static constexpr std::size_t kSensors = 13;
  struct Sensor;
  static const std::array<Sensor, kSensors> kTable;

  std::vector<AlpacaMember> OwnMembers() override;
  Json State(const AlpacaCall& call) override;

  /// The index of the sensor that `call` names. Throws AlpacaError for one that is not known or not fitted.
  [[nodiscard]] static std::size_t SensorOf(const AlpacaCall& call);
  /// Throws AlpacaError when the client has not connected. Who gives no number cannot have, and may read all the same.
  void CheckConnected(const AlpacaCall& call);
  [[nodiscard]] Json Read(const Sensor& sensor, const AlpacaCall& call);
  [[nodiscard]] Json SetAveragePeriod(const AlpacaCall& call);
  [[nodiscard]] Json Describe(const AlpacaCall& call) const;
  [[nodiscard]] Json TimeSinceUpdate(const AlpacaCall& call);

  std::array<std::optional<std::int64_t>, kSensors> known_at_{};  ///< ticks
};

}  // namespace orvalis::network
