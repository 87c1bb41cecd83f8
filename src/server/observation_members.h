#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "app/observer.h"
#include "server/traffic.h"

namespace orvalis {

/// One of the observed values that are known.
struct NamedValue {
  std::string_view name;
  double value = 0;
};

/// What a member of the observation gives to clients.
using ObservationValue =
    std::variant<bool, std::int64_t, double, std::string, std::vector<std::string_view>, std::vector<NamedValue>>;

/// One member of the observation, for the D-Bus and COM servers. All can only be read.
struct ObservationMember {
  std::string_view name;
  bool steady = true;  ///< it does not change from moment to moment by itself
  ObservationValue (*read)(const Observation& now) = nullptr;
};

// The members, in the order of their table.
enum class ObservationProperty { kSafe, kSince, kReasons, kExplanation, kAgeSeconds, kSource, kValues };
[[nodiscard]] std::span<const ObservationMember> ObservationMembers();
[[nodiscard]] const ObservationMember& MemberOf(ObservationProperty property);

/// The values that are known, in the order of their table.
[[nodiscard]] std::vector<NamedValue> KnownValues(const Observation& now);
/// The value of that name. Throws RunTimeError: kTypeMismatch while it is unknown, kSubscriptOutOfRange where there is
/// none of that name.
[[nodiscard]] double KnownValue(const Observation& now, std::string_view name);

/// Where clients look at the observation.
class ObservationReader {
 public:
  /// Both must outlive the reader. `traffic` is null while the traffic window is closed.
  ObservationReader(Observer& observer, Traffic* const& traffic) : observer_(observer), traffic_(traffic) {}

  [[nodiscard]] const Observation& Now() const { return observer_.Now(); }
  /// The same for the client `caller` that asks for the property `asked`, or with "" for all. Each look is a line in
  /// the traffic window.
  [[nodiscard]] const Observation& Look(std::string_view asked, std::string_view caller = {}) const;

 private:
  Observer& observer_;
  Traffic* const& traffic_;
};

}  // namespace orvalis
