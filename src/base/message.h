#pragma once

#include <concepts>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvalis {

/// Gives a phrase in a person's language. An empty one is English.
using Language = std::function<std::string(const char* english)>;

class Message;

/// A text of the program in English, with %1 to %9 for what goes in: always a whole sentence, because languages order
/// their words differently. Made by `Message::Of`.
class Phrase {
 public:
  /// Each of `parts` is a message, a text as it is, or a whole number.
  template <typename... Parts>
  [[nodiscard]] Message With(Parts&&... parts) const;
  [[nodiscard]] constexpr const char* english() const { return english_; }

 private:
  friend class Message;
  explicit constexpr Phrase(const char* english) : english_(english) {}

  const char* english_;
};

/// What the program tells people. Interfaces, logs and the event list take it in English, windows in their language.
class Message {
 public:
  /// Written in full everywhere, and with a literal: what stands in `Message::Of("…")` is collected for translation.
  [[nodiscard]] static constexpr Phrase Of(const char* english) { return Phrase(english); }

  Message() = default;
  Message(Phrase phrase) : english_(phrase.english()) {}  // NOLINT(google-explicit-constructor)
  /// A text that is not the program's own, such as a path or what the system says: the same in every language.
  Message(std::string as_it_is) : as_it_is_(std::move(as_it_is)) {}  // NOLINT(google-explicit-constructor)

  [[nodiscard]] std::string In(const Language& language) const;
  [[nodiscard]] std::string English() const { return In({}); }

  [[nodiscard]] bool empty() const { return *english_ == '\0' && as_it_is_.empty(); }
  void clear() { *this = {}; }

  [[nodiscard]] bool operator==(const Message& other) const;

 private:
  friend class Phrase;
  static Message Part(Message part) { return part; }
  static Message Part(Phrase part) { return part; }
  static Message Part(std::string part) { return part; }
  static Message Part(std::string_view part) { return std::string(part); }
  static Message Part(const char* part) { return std::string(part); }
  static Message Part(std::integral auto number) { return std::to_string(number); }

  const char* english_ = "";
  std::string as_it_is_;
  std::vector<Message> parts_;
};

template <typename... Parts>
Message Phrase::With(Parts&&... parts) const {
  Message message(*this);
  (message.parts_.push_back(Message::Part(std::forward<Parts>(parts))), ...);
  return message;
}

/// "first; second", with that separator; one of the two alone if the other is empty.
[[nodiscard]] Message Joined(Message first, std::string_view separator, Message second);

}  // namespace orvalis
