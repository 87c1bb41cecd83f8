#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>

#include "base/text.h"

namespace orvalis {

/// Everything in a store, by the key's path: "RainThreshold", "Capabilities/TempMax".
using ProfileValues = std::map<std::string, std::string>;

/// How a store detects that it was destroyed, and where it keeps the notice.
struct StoreRules {
  /// What shows that `values` were destroyed ("has no version stamp"), "" when nothing does.
  std::function<std::string(const ProfileValues& values)> fault;
  /// Whether a start with `values` succeeds, so that they may serve as the copy.
  std::function<bool(const ProfileValues& values)> good;
  /// The root key that holds the notice of a loss until a person acknowledges it.
  std::string_view notice_key;
};

/// The key of the notice. It is not a setting and survives a reset.
inline constexpr std::string_view kLossNoticeKey = "SettingsLost";

[[nodiscard]] StoreRules RulesForSettings(NumberLocale locale);

/// What happened to a destroyed store.
struct StoreLoss {
  std::string location;  ///< of the store
  std::string fault;     ///< as the rules have it
  std::string kept_as;   ///< name under which the damaged store was kept, or ""
  std::string copy_of;   ///< date of the copy that was restored, "" without a good one
};
/// The notice, for the panel and the event list.
[[nodiscard]] std::string LossNotice(const StoreLoss& loss);

}  // namespace orvalis
