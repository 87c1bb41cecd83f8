#pragma once

#include <QDate>
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

/// "SAFE" or "UNSAFE" while the model's values are current; otherwise "NO DATA". The time of the last reading includes
/// its date unless that is `today`.
[[nodiscard]] BigWordText VerdictText(const PanelModel& model, QDate today, const TimeStyle& style);
/// The sky word and the values it is derived from.
[[nodiscard]] BigWordText SkyText(const PanelModel& model);

/// Since when the values are out of date: "no reading since 21:04:05", "no reading yet".
[[nodiscard]] QString StaleSinceText(const std::optional<CivilTime>& fresh_at, QDate today, const TimeStyle& style);

/// "°C" or "°F"
[[nodiscard]] QString TemperatureUnit(bool centigrade);

/// What an abbreviated word means: "partly cloudy" for "PCloudy"; empty when the word needs no explanation.
[[nodiscard]] QString SkyMeaning(std::string_view word);
/// "on", "undetermined" and "off" for the signs "Y", "?" and "N".
[[nodiscard]] QString SwitchMeaning(std::string_view sign);

[[nodiscard]] QString ToQString(std::string_view text);
/// `text`, or a dash when it is empty.
[[nodiscard]] QString OrDash(const QString& text);

}  // namespace orvalis
