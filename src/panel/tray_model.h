#pragma once

#include <optional>
#include <string>

#include "base/message.h"
#include "panel/verdict_banner.h"

namespace orvalis {

/// A message over the desktop.
struct TrayMessage {
  bool safe = false;
  std::string title;  ///< "UNSAFE", "SAFE"
  std::string text;   ///< why, and since when

  bool operator==(const TrayMessage&) const = default;
};

/// What an icon in the desktop's tray says of the verdict.
class TrayModel {
 public:
  /// Takes the banner as it is, in `language`. Returns what there is to tell: that it became safe or unsafe. The first
  /// banner tells nothing, because a start always begins unsafe.
  [[nodiscard]] std::optional<TrayMessage> Take(const VerdictBanner& banner, const Language& language = {});

 private:
  std::optional<bool> safe_;
};

/// The tool tip of the icon: the banner's line, and since when.
[[nodiscard]] std::string TrayTip(const VerdictBanner& banner);

}  // namespace orvalis
