#include "publish/submit_fields.h"

#include "config/settings_table.h"

namespace orvalis {
namespace {

/// What a server takes for something else when it stands in a query by itself.
constexpr std::string_view kQueryMarks = " &%+#";
constexpr std::string_view kPromptBegin = "Your ";

}  // namespace

bool IsPrompt(std::string_view key, std::string_view text) {
  const SettingKey* const setting = FindSettingKey(key);
  return setting != nullptr && text.starts_with(kPromptBegin) && text == setting->default_text;
}

std::string_view Remark(const SubmitText& box, std::string_view text) {
  if (IsPrompt(box.key, text)) return "Enter yours: this text is never sent";
  if (!box.in_query || text.find_first_of(kQueryMarks) == std::string_view::npos) return "";
  // Which of them it is would tell something of a password.
  return "Sent as it stands: the service may misread a blank, \"&\", \"%\", \"+\" or \"#\" in it";
}

}  // namespace orvalis
