#include "publish/submit_fields.h"

#include "config/settings_table.h"

namespace orvalis {
namespace {

/// Characters that a server may misread when they appear unencoded in a query.
constexpr std::string_view kQueryMarks = " &%+#";
constexpr std::string_view kPromptBegin = "Your ";

}  // namespace

bool IsPrompt(std::string_view key, std::string_view text) {
  const SettingKey* const setting = FindSettingKey(key);
  return setting != nullptr && text.starts_with(kPromptBegin) && text == setting->default_text;
}

Message Remark(const SubmitText& box, std::string_view text) {
  if (IsPrompt(box.key, text)) return Message::Of("Enter your own: this placeholder is never sent");
  if (!box.in_query || text.find_first_of(kQueryMarks) == std::string_view::npos) return {};
  // Naming the character would reveal part of a password.
  return Message::Of("Sent as is: the service may misread a blank, \"&\", \"%\", \"+\" or \"#\" in it");
}

}  // namespace orvalis
