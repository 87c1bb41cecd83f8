#pragma once

#include <QString>
#include <optional>
#include <string_view>

#include "base/clock.h"
#include "panel/panel_model.h"

namespace orvalis {

/// The texts of the two largest cards of the panel.
struct BigWordText {
  QString word;
  QString detail;
  std::optional<Colour> colour;  ///< none: grey, the current state is unknown
};

/// The verdict; below it a line each for its reason and for how long it has been.
[[nodiscard]] BigWordText VerdictText(const VerdictBanner& banner);
/// Green only for what is safe without any condition.
[[nodiscard]] Colour ColourOf(VerdictBanner::State state);
/// The sky word and the values it is derived from.
[[nodiscard]] BigWordText SkyText(const PanelModel& model);

/// "°C" or "°F"
[[nodiscard]] QString TemperatureUnit(bool centigrade);

/// What a condition's fixed word means in the language of the windows: "partly cloudy" for "PCloudy"; empty when the
/// word says the same.
[[nodiscard]] QString WordMeaning(std::string_view word);
/// "on", "undetermined" and "off" for the signs "Y", "?" and "N".
[[nodiscard]] QString SwitchMeaning(std::string_view sign);

[[nodiscard]] QString ToQString(std::string_view text);
/// `value` with so many decimals, as the locale writes numbers.
[[nodiscard]] QString DecimalText(double value, int decimals);
/// `text`, or a dash when it is empty.
[[nodiscard]] QString OrDash(const QString& text);

}  // namespace orvalis
