#include "base/message.h"

#include <cstddef>

namespace orvalis {

std::string Message::In(const Language& language) const {
  if (*english_ == '\0') return as_it_is_;
  const std::string pattern = language ? language(english_) : english_;
  std::string text;
  for (std::size_t i = 0; i < pattern.size(); ++i) {
    const char digit = pattern[i] == '%' && i + 1 < pattern.size() ? pattern[i + 1] : '0';
    const std::size_t part = digit >= '1' && digit <= '9' ? static_cast<std::size_t>(digit - '1') : parts_.size();
    if (part < parts_.size()) {
      text += parts_[part].In(language);
      ++i;
    } else {
      text += pattern[i];
    }
  }
  return text;
}

bool Message::operator==(const Message& other) const {
  return std::string_view(english_) == other.english_ && as_it_is_ == other.as_it_is_ && parts_ == other.parts_;
}

Message Joined(Message first, std::string_view separator, Message second) {
  if (first.empty()) return second;
  if (second.empty()) return first;
  constexpr const char* kList = "%1%2%3";  // the same in every language
  return Message::Of(kList).With(std::move(first), separator, std::move(second));
}

}  // namespace orvalis
