#include "text.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace orvalis_unit {
namespace {

constexpr double kLongestSeconds = 1e9;
constexpr std::string_view kBlanks = " \t\r";

std::optional<unsigned> ParseDigits(std::string_view text, std::size_t most_digits) {
  unsigned value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (text.empty() || text.size() > most_digits || error != std::errc() || end != text.data() + text.size()) return {};
  return value;
}

}  // namespace

std::optional<double> ParseNumber(std::string_view text) {
  if (text.starts_with('+')) {
    text.remove_prefix(1);
    if (text.starts_with('-')) return {};
  }
  double value = 0.0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
  if (text.empty() || error != std::errc() || end != text.data() + text.size() || !std::isfinite(value)) return {};
  return value;
}

std::optional<double> ParseSeconds(std::string_view text) {
  const auto value = ParseNumber(text);
  if (!value || *value < 0.0 || *value > kLongestSeconds) return {};
  return value;
}

std::optional<double> ParseTime(std::string_view text) {
  const auto first_colon = text.find(':');
  if (first_colon == std::string_view::npos) return ParseSeconds(text);

  const auto hours = ParseDigits(text.substr(0, first_colon), 5);
  text.remove_prefix(first_colon + 1);
  const auto second_colon = text.find(':');
  const auto minutes = ParseDigits(text.substr(0, second_colon), 2);
  std::optional<unsigned> seconds = 0;
  if (second_colon != std::string_view::npos) seconds = ParseDigits(text.substr(second_colon + 1), 2);
  if (!hours || !minutes || !seconds || *minutes > 59 || *seconds > 59) return {};
  return *hours * 3600.0 + *minutes * 60.0 + *seconds;
}

std::string TimeText(double seconds) {
  const auto whole = static_cast<long long>(seconds);
  std::array<char, 48> text{};
  std::snprintf(text.data(), text.size(), "%lld:%02lld:%02lld", whole / 3600, whole / 60 % 60, whole % 60);
  return text.data();
}

std::string NumberText(double value) {
  std::array<char, 400> text{};
  const auto result = std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
  return {text.data(), result.ptr};
}

std::string Quoted(std::string_view bytes) {
  std::string text = "\"";
  for (const char c : bytes) {
    if (c == '"' || c == '\\') {
      text += '\\';
      text += c;
    } else if (c >= ' ' && c <= '~') {
      text += c;
    } else {
      constexpr std::string_view kHexDigits = "0123456789ABCDEF";
      const auto code = static_cast<unsigned char>(c);
      text += "\\x";
      text += kHexDigits[code / 16];
      text += kHexDigits[code % 16];
    }
  }
  return text + '"';
}

std::vector<std::string_view> Words(std::string_view line) {
  std::vector<std::string_view> words;
  while (true) {
    const auto begin = line.find_first_not_of(kBlanks);
    if (begin == std::string_view::npos) return words;
    line.remove_prefix(begin);
    const auto length = std::min(line.find_first_of(kBlanks), line.size());
    words.push_back(line.substr(0, length));
    line.remove_prefix(length);
  }
}

Time FromSeconds(double seconds) { return Time(std::llround(seconds * 1e9)); }

double ToSeconds(Time time) { return std::chrono::duration<double>(time).count(); }

}  // namespace orvalis_unit
