#include "panel/tray_model.h"

#include <utility>

namespace orvalis {

std::optional<TrayMessage> TrayModel::Take(const VerdictBanner& banner, const Language& language) {
  const bool safe = banner.state == VerdictBanner::State::kSafe || banner.state == VerdictBanner::State::kSafeDemo;
  const std::optional<bool> before = std::exchange(safe_, safe);
  if (!before || *before == safe) return std::nullopt;
  // While it waits to be safe again the banner's word is of what will be.
  TrayMessage message{
      .safe = safe, .title = safe ? banner.word : Message(Message::Of("UNSAFE")).In(language), .text = {}};
  for (const std::string& explanation : banner.explanations) {
    // The unit and the program often have the same reason.
    if (message.text.find(explanation) != std::string::npos) continue;
    message.text += (message.text.empty() ? "" : "\n") + explanation;
  }
  if (message.text.empty()) message.text = banner.since;
  return message;
}

std::string TrayTip(const VerdictBanner& banner) {
  return "Orvalis: " + banner.text + (banner.since.empty() ? "" : "\n" + banner.since);
}

}  // namespace orvalis
