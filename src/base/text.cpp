#include "base/text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <system_error>

#include "base/run_time_error.h"

namespace orvalis {
namespace {

constexpr int kMaxDecimals = 9;
constexpr std::string_view kBlanks = " \t";

bool IsDigit(char c) { return c >= '0' && c <= '9'; }

std::string_view Trim(std::string_view text) {
  const auto first = text.find_first_not_of(kBlanks);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

constexpr Phrase kNotYesOrNo = Message::Of("\"%1\" is not \"True\", \"False\" or a number");
constexpr Phrase kNotWhole = Message::Of("\"%1\" is not a whole number");
constexpr Phrase kNotNumber = Message::Of("\"%1\" is not a number");
constexpr Phrase kTooLarge = Message::Of("\"%1\" is too large");

/// `refusal` has a place for the text.
[[noreturn]] void ThrowMismatch(std::string_view text, Phrase refusal, NumberLocale locale) {
  throw RunTimeError(RunTimeError::kTypeMismatch,
                     Message::Of("%1 (the locale is %2, numbers are written like %3)")
                         .With(refusal.With(text), locale.name, std::string("1") + locale.decimal_separator + "5"));
}

/// Converts all of `text` to a number, or returns false. from_chars alone accepts "inf" and "nan", but no leading "+".
bool ParseWhole(std::string_view text, double& value, bool& too_large) {
  std::string plain(Trim(text));
  std::replace(plain.begin(), plain.end(), ',', '.');  // a second one is refused below
  const char* begin = plain.data();
  const char* end = begin + plain.size();
  if (begin != end && *begin == '+') {
    ++begin;
    if (begin != end && *begin == '-') return false;
  }
  const char* digits = begin != end && *begin == '-' ? begin + 1 : begin;
  if (digits == end || !(IsDigit(*digits) || *digits == '.')) return false;
  const auto [stop, error] = std::from_chars(begin, end, value);
  too_large = error == std::errc::result_out_of_range;
  return stop == end && (error == std::errc{} || too_large);
}

/// Whether `text` looks like a whole number with a thousands separator that is not this locale's decimal separator.
bool LooksGrouped(std::string_view text, NumberLocale locale) {
  constexpr std::size_t kGroup = 3;
  const std::string_view plain = Trim(text);
  const auto separator = plain.find(locale.decimal_separator == ',' ? '.' : ',');
  return separator != std::string_view::npos && plain.size() - separator - 1 == kGroup;
}

/// The significant digits shown of a double and of a float.
constexpr int kDoubleDigits = 15;
constexpr int kSingleDigits = 7;

/// A finite number as decimal digits: digit i has the weight 10^(exponent - i). The rest of the array is "0".
struct Significant {
  std::array<char, kDoubleDigits> digits;
  int exponent = 0;
};

/// The magnitude of `value`, rounded to `count` digits: the double 0.15 is slightly less than 0.15 but counts as 0.15.
Significant SignificantDigits(double value, int count) {
  std::array<char, 32> scientific;
  const auto [end, error] = std::to_chars(scientific.data(), scientific.data() + scientific.size(), std::fabs(value),
                                          std::chars_format::scientific, count - 1);
  static_cast<void>(error);  // so few digits always fit
  Significant result;
  result.digits.fill('0');
  result.digits[0] = scientific[0];
  std::copy_n(scientific.data() + 2, count - 1, result.digits.data() + 1);
  const char* exponent_text = scientific.data() + 2 + (count - 1) + 1;
  std::from_chars(*exponent_text == '+' ? exponent_text + 1 : exponent_text, end, result.exponent);
  return result;
}

/// See `GeneralText`, for `count` significant digits.
std::string General(double value, int count, NumberLocale locale) {
  if (!std::isfinite(value)) return FormatFixed(value, 0);
  const auto [digits, exponent] = SignificantDigits(value, count);
  int used = count;
  while (used > 1 && digits[static_cast<std::size_t>(used - 1)] == '0') --used;
  if (used == 1 && digits[0] == '0') return "0";
  const std::string significant(digits.data(), static_cast<std::size_t>(used));
  const std::string separator(1, locale.decimal_separator);

  std::string text = std::signbit(value) ? "-" : "";
  if (exponent >= count || used - 1 - exponent > count) {
    text += significant[0];
    if (used > 1) text += separator + significant.substr(1);
    const std::string power = std::to_string(std::abs(exponent));
    text += exponent < 0 ? "E-" : "E+";
    return text + (power.size() < 2 ? "0" : "") + power;
  }
  if (exponent < 0)
    return text + "0" + separator + std::string(static_cast<std::size_t>(-exponent - 1), '0') + significant;
  const auto whole = static_cast<std::size_t>(exponent) + 1;
  if (significant.size() <= whole) return text + significant + std::string(whole - significant.size(), '0');
  return text + significant.substr(0, whole) + separator + significant.substr(whole);
}

/// A value in fixed notation, in its own buffer: formatting runs for every frame and must not allocate.
struct FixedText {
  // The largest double has 309 digits before the point.
  std::array<char, 330> characters;
  std::size_t size = 0;

  [[nodiscard]] std::string_view View() const { return {characters.data(), size}; }
  void Append(char c) { characters[size++] = c; }
};

FixedText Fixed(double value, int decimals, char separator) {
  FixedText text;
  decimals = std::clamp(decimals, 0, kMaxDecimals);
  if (!std::isfinite(value)) {
    const std::string_view name = std::isnan(value) ? "nan" : (value > 0 ? "inf" : "-inf");
    for (const char c : name) text.Append(c);
    return text;
  }
  Significant significant = SignificantDigits(value, kDoubleDigits);
  std::array<char, kDoubleDigits>& digits = significant.digits;
  const int exponent = significant.exponent;

  // Digit i has the weight 10^(exponent - i); the last one kept 10^-decimals.
  const int kept = exponent + decimals + 1;
  bool carried = false;  // rounding carried past the first digit: "9.96" becomes "10.0"
  if (kept < 0) {
    digits.fill('0');
  } else if (kept < kDoubleDigits) {
    const bool up = digits[static_cast<std::size_t>(kept)] >= '5';
    std::fill(digits.begin() + kept, digits.end(), '0');
    if (up) {
      int i = kept - 1;
      while (i >= 0 && digits[static_cast<std::size_t>(i)] == '9') digits[static_cast<std::size_t>(i--)] = '0';
      if (i >= 0) {
        ++digits[static_cast<std::size_t>(i)];
      } else {
        carried = true;
      }
    }
  }
  const auto digit_at = [&](int power) -> char {
    if (carried && power == exponent + 1) return '1';
    const int index = exponent - power;
    return index >= 0 && index < kDoubleDigits ? digits[static_cast<std::size_t>(index)] : '0';
  };
  const bool zero = !carried && std::all_of(digits.begin(), digits.end(), [](char c) { return c == '0'; });
  if (std::signbit(value) && !zero) text.Append('-');
  for (int power = std::max(exponent + (carried ? 1 : 0), 0); power >= -decimals; --power) {
    if (power == -1) text.Append(separator);
    text.Append(digit_at(power));
  }
  return text;
}

}  // namespace

double Val(std::string_view text) {
  std::size_t i = text.find_first_not_of(kBlanks);
  if (i == std::string_view::npos) return 0;
  bool negative = false;
  if (text[i] == '+' || text[i] == '-') negative = text[i++] == '-';
  const std::size_t begin = i;
  bool point = false;
  while (i < text.size() && (IsDigit(text[i]) || (text[i] == '.' && !point))) point |= text[i++] == '.';
  double value = 0;
  // Text without a digit gives 0; so does a number too large for a double, which no field is wide enough to hold.
  std::from_chars(text.data() + begin, text.data() + i, value, std::chars_format::fixed);
  return negative ? -value : value;
}

std::int32_t ValInteger(std::string_view text) {
  constexpr double kLowest = std::numeric_limits<std::int32_t>::min();
  constexpr double kHighest = std::numeric_limits<std::int32_t>::max();
  return static_cast<std::int32_t>(std::clamp(std::trunc(Val(text)), kLowest, kHighest));
}

std::int32_t RoundToInteger(double value) {
  // nearbyint rounds halves to even in the default rounding mode, which is never changed.
  const double rounded = std::nearbyint(value);
  if (!(rounded >= std::numeric_limits<std::int32_t>::min() && rounded <= std::numeric_limits<std::int32_t>::max())) {
    throw RunTimeError(RunTimeError::kOverflow, RealToText(value) + " does not fit in a 32-bit integer");
  }
  return static_cast<std::int32_t>(rounded);
}

std::string FormatFixed(double value, int decimals, NumberLocale locale) {
  return std::string(Fixed(value, decimals, locale.decimal_separator).View());
}

double RoundToDecimals(double value, int decimals) {
  if (!std::isfinite(value)) return value;
  const FixedText text = Fixed(value, decimals, '.');
  double rounded = value;  // the largest ones stay as they are: their digits, rounded up, are beyond a double
  std::from_chars(text.characters.data(), text.characters.data() + text.size, rounded);
  return rounded;
}

std::string RightAlign(std::string_view text, std::size_t width) {
  std::string aligned(width > text.size() ? width - text.size() : 0, ' ');
  aligned += text;
  return aligned;
}

std::string_view FileName(std::string_view path) {
  const auto separator = path.find_last_of("\\/");
  return separator == std::string_view::npos ? path : path.substr(separator + 1);
}

bool TextToBoolean(std::string_view text, NumberLocale locale) {
  const std::string_view trimmed = Trim(text);
  const auto is = [&](std::string_view word) {
    return std::equal(trimmed.begin(), trimmed.end(), word.begin(), word.end(), [](char a, char b) {
      return std::tolower(static_cast<unsigned char>(a)) == std::tolower(static_cast<unsigned char>(b));
    });
  };
  if (is("True")) return true;
  if (is("False")) return false;
  double number = 0;
  bool too_large = false;
  if (!ParseWhole(text, number, too_large)) ThrowMismatch(text, kNotYesOrNo, locale);
  return too_large || number != 0;
}

std::int32_t TextToInteger(std::string_view text, NumberLocale locale) {
  double number = 0;
  bool too_large = false;
  if (!ParseWhole(text, number, too_large) || LooksGrouped(text, locale)) ThrowMismatch(text, kNotWhole, locale);
  if (too_large) number = std::numeric_limits<double>::infinity();
  return RoundToInteger(number);
}

double TextToReal(std::string_view text, NumberLocale locale) {
  double number = 0;
  bool too_large = false;
  if (!ParseWhole(text, number, too_large)) ThrowMismatch(text, kNotNumber, locale);
  if (too_large) throw RunTimeError(RunTimeError::kOverflow, kTooLarge.With(text));
  return number;
}

std::string GeneralText(double value, NumberLocale locale) { return General(value, kDoubleDigits, locale); }

std::string GeneralText(float value, NumberLocale locale) {
  return General(static_cast<double>(value), kSingleDigits, locale);
}

std::string_view BooleanToText(bool value) { return value ? "True" : "False"; }

std::string RealToText(double value, NumberLocale locale) {
  // Room for the smallest double: a sign, "0.", 323 zeros and 17 digits.
  std::array<char, 400> buffer;
  const auto [end, error] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
  static_cast<void>(error);
  std::string text(buffer.data(), end);
  std::replace(text.begin(), text.end(), '.', locale.decimal_separator);
  return text;
}

}  // namespace orvalis
