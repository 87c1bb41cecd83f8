#include "panel/event_text.h"

#include <algorithm>
#include <cctype>

namespace orvalis {
namespace {

std::string Lower(std::string_view text) {
  std::string lower(text);
  std::ranges::transform(lower, lower.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  return lower;
}

}  // namespace

bool Matches(const Event& event, std::string_view filter) {
  const std::string text = Lower(event.text);
  const std::string words = Lower(filter);
  for (std::size_t begin = 0; (begin = words.find_first_not_of(" \t", begin)) != std::string::npos;) {
    const std::size_t end = std::min(words.find_first_of(" \t", begin), words.size());
    if (text.find(words.substr(begin, end - begin)) == std::string::npos) return false;
    begin = end;
  }
  return true;
}

std::string EventFile(const std::deque<Event>& events, const TimeStyle& style) {
  std::string file;
  for (const Event& event : events) {
    std::string text = event.text;
    std::ranges::replace_if(
        text, [](char c) { return c == '\n' || c == '\r'; }, ' ');
    file += style.date(event.time) + " " + style.time(event.time) + "  " + text + "\n";
  }
  return file;
}

}  // namespace orvalis
