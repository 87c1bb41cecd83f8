// Numbers as people, settings and the unit write them: what is written is read back as it was.
#include <array>
#include <cmath>
#include <limits>
#include <optional>
#include <string>

#include "base/run_time_error.h"
#include "base/text.h"
#include "tests/fuzz/fuzz.h"

namespace orvalis {
namespace {

using fuzz::Require;

constexpr std::array<NumberLocale, 2> kLocales{
    {{.decimal_separator = '.', .name = "C"}, {.decimal_separator = ',', .name = "de"}}};

/// What `read` gives, or nothing where it refuses.
template <typename Read>
auto Accepted(Read read) -> std::optional<decltype(read())> {
  try {
    return read();
  } catch (const RunTimeError&) {
    return std::nullopt;
  }
}

void ReadText(std::string_view text, NumberLocale locale) {
  const auto real = Accepted([&] { return TextToReal(text, locale); });
  if (real) {
    Require(std::isfinite(*real), "a number that is read is finite", text);
    Require(TextToReal(RealToText(*real, locale), locale) == *real, "a number is read back as written", text);
  }
  const auto integer = Accepted([&] { return TextToInteger(text, locale); });
  if (integer) {
    Require(TextToInteger(std::to_string(*integer), locale) == *integer, "a whole number is read back", text);
    Require(real && std::fabs(*real - *integer) <= 0.5, "a whole number is the nearest one", text);
  }
  const auto truth = Accepted([&] { return TextToBoolean(text, locale); });
  if (truth) Require(TextToBoolean(BooleanToText(*truth)) == *truth, "a switch is read back", text);
  Require(std::isfinite(Val(text)), "a field of a frame is a finite number", text);
  Require(std::fabs(std::trunc(Val(text)) - ValInteger(text)) < 1 || std::fabs(Val(text)) > 2147483647,
          "a field is truncated", text);
}

void WriteNumber(double value, NumberLocale locale) {
  for (int decimals = 0; decimals <= 9; ++decimals) {
    const std::string text = FormatFixed(value, decimals, locale);
    const double rounded = RoundToDecimals(value, decimals);
    if (!std::isfinite(value)) {
      Require(std::isnan(value) ? std::isnan(rounded) : rounded == value, "what is no number is not rounded", text);
      continue;
    }
    const double allowed = 0.5 * std::pow(10.0, -decimals) * (1 + 1e-9) + 1e-14 * std::fabs(value);
    Require(std::fabs(rounded - value) <= allowed, "rounding changes little", text);
    Require(RoundToDecimals(rounded, decimals) == rounded, "what is rounded stays as it is", text);
    Require(text != "-0" && !(rounded == 0 && text[0] == '-'), "there is no minus before a zero", text);
    const auto read = Accepted([&] { return TextToReal(text, locale); });
    if (read) Require(*read == rounded, "the text of a rounded number is that number", text);
  }
  if (!std::isfinite(value)) return;
  Require(TextToReal(RealToText(value, locale), locale) == value, "a number is read back as written");
  const auto general = Accepted([&] { return TextToReal(GeneralText(value, locale), locale); });
  const bool shown = general && std::fabs(*general - value) <= 1e-14 * std::fabs(value);
  const bool at_the_end = std::fabs(value) > 1.7e308 || std::fabs(value) < std::numeric_limits<double>::min();
  Require(shown || at_the_end, "fifteen digits tell a number", GeneralText(value, locale));
}

}  // namespace
}  // namespace orvalis

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvalis;
  fuzz::Input input(data, size);
  const NumberLocale locale = kLocales.at(input.Byte() % kLocales.size());
  fuzz::Input bytes = input;
  const auto value = bytes.Raw<double>();
  WriteNumber(value, locale);
  static_cast<void>(Accepted([&] { return RoundToInteger(value); }));
  static_cast<void>(GeneralText(bytes.Raw<float>(), locale));
  ReadText(input.Rest(), locale);
  return 0;
}
