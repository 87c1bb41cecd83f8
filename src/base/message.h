#pragma once

#include <concepts>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvalis {

/// Gives a text of `Message` in a person's language. An empty one is English.
using Language = std::function<std::string(const char* english)>;

/// What the program tells people. Interfaces, logs and the event list take it in English, windows in their language.
///
/// Always a whole sentence, because languages order their words differently: a text with %1 to %9, and what goes in
/// their places.
class Message {
 public:
  /// A text of the program. Written as `Message::Text("…")`, everywhere and always with a literal: that is where the
  /// translations are collected from.
  class Text {
   public:
    explicit constexpr Text(const char* english) : english_(english) {}
    [[nodiscard]] constexpr const char* english() const { return english_; }
    /// Each of `parts` is a message, a text as it is, or a whole number.
    template <typename... Parts>
    [[nodiscard]] Message With(Parts&&... parts) const {
      Message message(*this);
      (message.parts_.push_back(Part(std::forward<Parts>(parts))), ...);
      return message;
    }

   private:
    const char* english_;
  };

  Message() = default;
  Message(Text text) : english_(text.english()) {}  // NOLINT(google-explicit-constructor)
  /// A text that is not the program's own, such as a path or what the system says: the same in every language.
  Message(std::string as_it_is) : as_it_is_(std::move(as_it_is)) {}  // NOLINT(google-explicit-constructor)

  [[nodiscard]] std::string In(const Language& language) const;
  [[nodiscard]] std::string English() const { return In({}); }

  [[nodiscard]] bool empty() const { return *english_ == '\0' && as_it_is_.empty(); }
  void clear() { *this = {}; }

  [[nodiscard]] bool operator==(const Message& other) const;

 private:
  static Message Part(Message part) { return part; }
  static Message Part(Text part) { return part; }
  static Message Part(std::string part) { return part; }
  static Message Part(std::string_view part) { return std::string(part); }
  static Message Part(const char* part) { return std::string(part); }
  static Message Part(std::integral auto number) { return std::to_string(number); }

  const char* english_ = "";
  std::string as_it_is_;
  std::vector<Message> parts_;
};

/// "first; second", with that separator; one of the two alone if the other is empty.
[[nodiscard]] Message Joined(Message first, std::string_view separator, Message second);

}  // namespace orvalis
