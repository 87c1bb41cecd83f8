#pragma once

#include <array>
#include <chrono>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace orvalis::indi {

/// Why it is unsafe.
struct Reason {
  std::string name;  ///< stays the same while figures in the text change
  std::string text;  ///< for a person
};

/// A value as INDI's clients know it.
struct ValueForm {
  const char* name;
  const char* label;
  const char* format;  ///< of printf
  double lowest, highest;
};
[[nodiscard]] const std::array<ValueForm, 8>& ValueForms();
/// In the order of `ValueForms`, and in their units; none is unknown.
using Values = std::array<std::optional<double>, 8>;

/// The program's answer to `/observation` (docs/network.md). Its texts can be sent to clients as they are.
struct Answer {
  std::string station;
  std::string uuid;
  bool safe = false;
  std::optional<std::chrono::milliseconds> age;  ///< of the last good reading; none before the first
  std::vector<Reason> reasons;
  Values values;
};

/// What is wrong with an answer, for a person.
struct NoAnswer {
  std::string problem;
};

/// Reads an answer of any content and length. Whatever is not exactly an observation is none.
[[nodiscard]] std::variant<Answer, NoAnswer> ReadAnswer(std::string_view body);

/// `text` for INDI's messages, which are XML and short: no control characters, at most `bytes` of them, cut between two
/// characters. `text` has to be UTF-8.
[[nodiscard]] std::string Printable(std::string_view text, std::size_t bytes);

/// Whether `text` has the form of a station's UUID.
[[nodiscard]] bool IsUuid(std::string_view text);

}  // namespace orvalis::indi
