#include "base/recognized.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace orvalis {

std::optional<Message> Recognized(std::string_view english, Phrase phrase,
                                  const std::function<std::optional<Message>(std::string_view text)>& part) {
  std::array<Message, 3> parts;
  std::size_t count = 0;
  std::string_view pattern = phrase.english();
  for (std::size_t place = 0; (place = pattern.find('%')) != std::string_view::npos;) {
    constexpr std::size_t kPlaceholder = 2;
    if (count == parts.size() || !english.starts_with(pattern.substr(0, place))) return std::nullopt;
    english.remove_prefix(place);
    pattern.remove_prefix(std::min(place + kPlaceholder, pattern.size()));
    const std::string_view next = pattern.substr(0, pattern.find('%'));
    const std::size_t end = next.empty() ? english.size() : english.find(next);
    if (end == std::string_view::npos) return std::nullopt;
    std::optional<Message> known = part(english.substr(0, end));
    if (!known) return std::nullopt;
    parts[count++] = *std::move(known);
    english.remove_prefix(end);
  }
  if (english != pattern) return std::nullopt;
  // The places that the phrase does not have take what is left over.
  return phrase.With(std::move(parts[0]), std::move(parts[1]), std::move(parts[2]));
}

}  // namespace orvalis
