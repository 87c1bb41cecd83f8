#include "publish/submit_fields.h"

#include <utility>

#include "config/settings_table.h"

namespace orvalis {
namespace {

/// What a server takes for something else when it stands in a query by itself.
constexpr std::array<std::pair<char, std::string_view>, 5> kQueryMarks{
    {{' ', "a blank"}, {'&', "\"&\""}, {'%', "\"%\""}, {'+', "\"+\""}, {'#', "\"#\""}}};
constexpr std::string_view kPromptBegin = "Your ";

}  // namespace

bool IsPrompt(std::string_view key, std::string_view text) {
  const SettingKey* const setting = FindSettingKey(key);
  return setting != nullptr && text.starts_with(kPromptBegin) && text == setting->default_text;
}

std::string Remark(const SubmitText& box, std::string_view text) {
  if (IsPrompt(box.key, text)) return "Enter yours: this text is never sent";
  if (!box.in_query) return "";
  std::string marks;
  for (const auto& [mark, name] : kQueryMarks) {
    if (text.find(mark) == std::string_view::npos) continue;
    if (!marks.empty()) marks += ", ";
    marks += name;
  }
  return marks.empty() ? "" : "Sent as it stands; the service may misread it because of " + marks;
}

}  // namespace orvalis
