#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/message.h"

namespace orvalis {

/// Why it is unsafe. In the order in which several are named: what takes a person's attention first comes first.
enum class Reason : std::uint8_t {
  kNoConnection,        ///< no link to the unit
  kNoReading,           ///< linked, and no undamaged frame yet
  kStale,               ///< the last undamaged frame is older than `kFreshFor`
  kDamagedReading,      ///< stale, and only damaged frames came meanwhile
  kDemo,                ///< simulated values
  kUnitAlarm,           ///< the unit's relay is on
  kRain,                ///< the word is "Damp" or "Rain", and the settings count it
  kWind,                ///< the word is "Windy", and the settings count it
  kClouds,              ///< the word is "Cloudy", and the settings count it
  kLight,               ///< the word is "Day", and the settings count it
  kRelayOff,            ///< the unit's relay may not act or is forced, so that its digit says nothing
  kSettingsPending,     ///< since the unit was greeted, not all settings have been sent to it
  kSettingsLost,        ///< the settings were restored or reset, and nobody has acknowledged that
  kUnknownTemperature,  ///< the ambient temperature is unknown, and so are the clouds
  kForced,              ///< a person wants it unsafe, or tries out what happens then
  kStopping,            ///< the program is ending
  kHold,                ///< none of the others any more, but not yet for long enough
};
inline constexpr std::size_t kReasonCount = 17;

/// The name of `reason` on all interfaces: "no_connection".
[[nodiscard]] std::string_view Name(Reason reason);
/// The reason of that name in a few words, for a person; `name` itself if there is none.
[[nodiscard]] Message ReasonInWords(std::string_view name);

/// Some reasons, in their order.
class ReasonSet {
 public:
  constexpr ReasonSet() = default;

  constexpr void Add(Reason reason) { bits_ |= Bit(reason); }
  [[nodiscard]] constexpr bool Has(Reason reason) const { return (bits_ & Bit(reason)) != 0; }
  [[nodiscard]] constexpr bool empty() const { return bits_ == 0; }
  /// Those that `other` does not have.
  [[nodiscard]] constexpr ReasonSet Without(ReasonSet other) const { return ReasonSet(bits_ & ~other.bits_); }
  [[nodiscard]] constexpr bool operator==(const ReasonSet& other) const = default;

  /// Calls `visit` with each.
  template <typename Visit>
  constexpr void ForEach(Visit visit) const {
    for (std::size_t i = 0; i < kReasonCount; ++i) {
      if (Has(static_cast<Reason>(i))) visit(static_cast<Reason>(i));
    }
  }

 private:
  constexpr explicit ReasonSet(std::uint32_t bits) : bits_(bits) {}
  static constexpr std::uint32_t Bit(Reason reason) { return std::uint32_t{1} << static_cast<unsigned>(reason); }

  std::uint32_t bits_ = 0;
};

/// The names of `reasons`, in their order.
[[nodiscard]] std::vector<std::string_view> NamesOf(ReasonSet reasons);

}  // namespace orvalis
