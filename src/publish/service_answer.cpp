#include "publish/service_answer.h"

#include <algorithm>
#include <array>
#include <span>

namespace orvalis {
namespace {

/// A longer line is not a status line.
constexpr std::size_t kLongestFirstLine = 120;

// Lower-case words without separators: "Invalid password" is "invalidpassword".
/// The account is wrong.
constexpr std::array<std::string_view, 13> kAccountWords{
    "invalidpassword", "invalidid",         "invalidstation",     "unauthori",     "notauthori",
    "accessdenied",    "incorrectpassword", "badpassword",        "wrongpassword", "unknownstation",
    "invaliduser",     "passwordiswrong",   "passwordisincorrect"};
/// Negated success.
constexpr std::array<std::string_view, 3> kNoSuccessWords{"unsuccess", "notsuccess", "successfalse"};
constexpr std::array<std::string_view, 3> kSuccessWords{"success", "noerror", "withouterror"};
constexpr std::array<std::string_view, 8> kFailureWords{"invalid",  "incorrect", "denied", "forbidden",
                                                        "rejected", "error",     "fail",   "notvalid"};

bool HasOneOf(std::string_view letters, std::span<const std::string_view> words) {
  return std::any_of(words.begin(), words.end(),
                     [&](std::string_view word) { return letters.find(word) != std::string_view::npos; });
}

/// The three digits of the status, or "".
std::string_view Status(std::string_view answer) {
  constexpr std::size_t kDigits = 3;
  const std::string_view first_line = answer.substr(0, std::min(answer.find_first_of("\r\n"), kLongestFirstLine));
  const auto blank = first_line.find(' ');
  if (!first_line.starts_with("HTTP/") || blank == std::string_view::npos) return "";
  std::string_view status = first_line.substr(blank + 1);
  const auto end = std::min(status.find_first_not_of("0123456789"), status.size());
  if (end != kDigits || (end < status.size() && status[end] != ' ')) return "";
  return status.substr(0, end);
}

/// The letters and digits of the body, which follows the first empty line, with any line ends.
std::string LettersOfText(std::string_view answer) {
  std::string letters;
  bool in_text = false;
  bool line_empty = false;
  for (char c : answer) {
    if (c == '\r') continue;
    in_text = in_text || (c == '\n' && line_empty);
    line_empty = c == '\n';
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    if (in_text && ((c >= 'a' && c <= 'z') || (c >= '0' && c <= '9'))) letters += c;
  }
  return letters;
}

/// What the body says against the upload, or "".
std::string_view TextObjection(std::string_view letters) {
  constexpr std::string_view kFailed = "its text says that this failed";
  if (HasOneOf(letters, kAccountWords)) return "its text says that the ID or the password is wrong";
  if (HasOneOf(letters, kNoSuccessWords)) return kFailed;
  if (HasOneOf(letters, kSuccessWords)) return "";
  return HasOneOf(letters, kFailureWords) ? kFailed : "";
}

}  // namespace

bool HasStatusLine(std::string_view answer) {
  return answer.size() > kLongestFirstLine || answer.find_first_of("\r\n") != std::string_view::npos;
}

std::string ServiceObjection(std::string_view answer) {
  if (answer.empty()) return "the server closed the connection without answering";
  const std::string status(Status(answer));
  if (status.empty()) return "the response is not from a web server";
  if (status.front() == '3') return "the server redirects (status " + status + "), and redirects are not followed";
  if (status.front() != '2') return "the server refused (status " + status + ")";
  const std::string_view objection = TextObjection(LettersOfText(answer));
  if (objection.empty()) return "";
  return std::string("the server refused (status ").append(status).append("): ").append(objection);
}

}  // namespace orvalis
