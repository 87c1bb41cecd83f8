#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "base/text.h"

namespace orvalis {

/// Everything in a store, by the key's path: "RainThreshold", "Capabilities/TempMax".
using ProfileValues = std::map<std::string, std::string>;

/// By what a store tells whether it was destroyed, and where it keeps what it says then.
struct StoreRules {
  /// What shows that `values` were destroyed ("has lost its version stamp"), "" when nothing does.
  std::function<std::string(const ProfileValues& values)> fault;
  /// Whether a start with `values` succeeds, so that they are worth a copy and may stand in.
  std::function<bool(const ProfileValues& values)> good;
  /// The key at the root that holds the notice of a loss until a person has acknowledged it.
  std::string_view notice_key;
};

/// The notice's key. It is no setting: nothing that resets the settings touches it.
inline constexpr std::string_view kLossNoticeKey = "SettingsLost";

[[nodiscard]] StoreRules RulesForSettings(NumberLocale locale);

/// What became of a store that was destroyed.
struct StoreLoss {
  std::string location;  ///< of the store
  std::string fault;     ///< as the rules have it
  std::string kept_as;   ///< a name beside it, "" where there was nothing to keep
  std::string copy_of;   ///< when the copy was made that took its place, "" without a good one
};
/// The notice, for the panel and the event list.
[[nodiscard]] std::string LossNotice(const StoreLoss& loss);

}  // namespace orvalis
