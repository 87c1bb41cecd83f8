#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvalis {

/// How the user's locale writes numbers. Only the settings and what a person reads depend on it; everything on a wire
/// or in a log has a point.
struct NumberLocale {
  char decimal_separator = '.';
  const char* name = "C";  ///< for a person; the text lives as long as the program
};

/// The number at the start of `text`: leading blanks, a sign, digits and one point, as far as they go. What follows is
/// ignored; nothing readable is 0. Always with a point: this is how the unit writes.
[[nodiscard]] double Val(std::string_view text);

/// As `Val`, cut to a whole number; beyond 32 bits it stays at the limit.
[[nodiscard]] std::int32_t ValInteger(std::string_view text);

/// `value` rounded to a whole number, halves to the even neighbour.
/// Throws RunTimeError kOverflow when it does not fit 32 bits.
[[nodiscard]] std::int32_t RoundToInteger(double value);

/// `value` with exactly `decimals` (0 to 9) digits behind the separator, as the formats "0", "0.0", "0.00" … give it:
/// rounded from its 15 significant decimal digits, halves away from zero; never "-0.0".
/// Infinities and not-a-number become "inf", "-inf" and "nan".
[[nodiscard]] std::string FormatFixed(double value, int decimals, NumberLocale locale = {});

/// As `FormatFixed`, back as a number: what a reader of the shown text would take.
[[nodiscard]] double RoundToDecimals(double value, int decimals);

/// A number as it is joined to a text: 15 significant digits of a double, 7 of a single, no trailing zeros. As a plain
/// decimal when no more digits than that stand on either side of the separator ("0.45", "100"), otherwise with an
/// exponent of two digits or more ("3.33333333333333E-02", "1E+15").
[[nodiscard]] std::string GeneralText(double value, NumberLocale locale = {});
[[nodiscard]] std::string GeneralText(float value, NumberLocale locale = {});

/// `text` behind as many blanks as make it `width` characters; longer texts stay as they are.
[[nodiscard]] std::string RightAlign(std::string_view text, std::size_t width);

/// The last component of a path in either system's notation: what stands after the last "\" or "/".
[[nodiscard]] std::string_view FileName(std::string_view path);

// Settings as text. Each conversion takes the whole text (blanks around it are ignored) or throws
// RunTimeError kTypeMismatch; a number that does not fit its type throws kOverflow.

/// "True" and "False" in any case, or a number: 0 is false, any other true.
[[nodiscard]] bool TextToBoolean(std::string_view text, NumberLocale locale = {});
/// A whole number; a fraction is rounded, halves to the even neighbour. Three digits after the separator that is not
/// the locale's are refused: whoever wrote "1,000" there meant a thousand.
[[nodiscard]] std::int32_t TextToInteger(std::string_view text, NumberLocale locale = {});
/// A number, an exponent allowed.
[[nodiscard]] double TextToReal(std::string_view text, NumberLocale locale = {});

[[nodiscard]] std::string_view BooleanToText(bool value);
/// The shortest decimal form that reads back as the same number, without an exponent.
[[nodiscard]] std::string RealToText(double value, NumberLocale locale = {});

}  // namespace orvalis
