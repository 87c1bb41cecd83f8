#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

namespace orvalis {

/// The user's number format. It applies only to the settings and to text that people read; wires and logs always use a
/// point.
struct NumberLocale {
  char decimal_separator = '.';
  const char* name = "C";  ///< for a person; a static string
};

/// The number at the start of `text`: leading blanks, a sign, digits and one point. What follows is ignored; 0 if there
/// is no number. Always with a decimal point, as the unit writes it.
[[nodiscard]] double Val(std::string_view text);

/// As `Val`, truncated to a whole number and clamped to 32 bits.
[[nodiscard]] std::int32_t ValInteger(std::string_view text);

/// `value` rounded to a whole number, halves to the even neighbour.
/// Throws RunTimeError kOverflow when it does not fit 32 bits.
[[nodiscard]] std::int32_t RoundToInteger(double value);

/// `value` with exactly `decimals` (0 to 9) decimals, as the formats "0", "0.0", "0.00" …: rounded from its 15
/// significant decimal digits, halves away from zero; never "-0.0". Infinities and not-a-number become "inf", "-inf"
/// and "nan".
[[nodiscard]] std::string FormatFixed(double value, int decimals, NumberLocale locale = {});

/// `value` rounded as `FormatFixed` does.
[[nodiscard]] double RoundToDecimals(double value, int decimals);

/// A number in general format: 15 significant digits for a double, 7 for a float, no trailing zeros. A plain decimal
/// when it needs no more digits than that on either side of the separator ("0.45", "100"), otherwise with an exponent
/// of at least two digits ("3.33333333333333E-02", "1E+15").
[[nodiscard]] std::string GeneralText(double value, NumberLocale locale = {});
[[nodiscard]] std::string GeneralText(float value, NumberLocale locale = {});

/// `text` padded on the left with blanks to `width` characters; longer texts are unchanged.
[[nodiscard]] std::string RightAlign(std::string_view text, std::size_t width);

/// The last component of a path in either system's notation: everything after the last "\" or "/".
[[nodiscard]] std::string_view FileName(std::string_view path);

// Settings as text. Each conversion uses the entire text, ignoring blanks around it, or throws RunTimeError
// kTypeMismatch; a number that does not fit its type throws kOverflow.

/// "True" and "False" in any case, or a number: 0 is false, any other true.
[[nodiscard]] bool TextToBoolean(std::string_view text, NumberLocale locale = {});
/// A whole number; a fraction is rounded, halves to the even neighbour. Three digits after the other locale's separator
/// are refused: "1,000" may mean a thousand.
[[nodiscard]] std::int32_t TextToInteger(std::string_view text, NumberLocale locale = {});
/// A number, an exponent allowed.
[[nodiscard]] double TextToReal(std::string_view text, NumberLocale locale = {});

[[nodiscard]] std::string_view BooleanToText(bool value);
/// The shortest decimal form that reads back as the same number, without an exponent.
[[nodiscard]] std::string RealToText(double value, NumberLocale locale = {});

}  // namespace orvalis
