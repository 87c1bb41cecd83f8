#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>
#include <optional>
#include <string_view>

#include "base/clock.h"
#include "panel/panel_model.h"

namespace orvalis {

/// What the largest words of the panel say.
struct BigWordText {
  QString word;
  QString detail;
  std::optional<Colour> colour;  ///< nothing: grey, nothing is known about now
};

/// "SAFE" and "UNSAFE" when the model says so and its values are of now; otherwise "NO DATA". `today` decides whether
/// the time of the last reading needs its date.
[[nodiscard]] BigWordText VerdictText(const PanelModel& model, QDate today);
/// The sky word and what it was made of.
[[nodiscard]] BigWordText SkyText(const PanelModel& model);

/// Since when the values are old: "no reading since 21:04:05", "no reading yet".
[[nodiscard]] QString StaleSinceText(const std::optional<CivilTime>& fresh_at, QDate today);

/// "°C" or "°F"
[[nodiscard]] QString TemperatureUnit(bool centigrade);

/// What an abbreviated word means: "partly cloudy" for "PCloudy"; empty when the word speaks for itself.
[[nodiscard]] QString SkyMeaning(std::string_view word);
/// "on", "undetermined" and "off" for the signs "Y", "?" and "N".
[[nodiscard]] QString SwitchMeaning(std::string_view sign);

[[nodiscard]] QString ToQString(std::string_view text);
/// A dash for a text that is not there yet.
[[nodiscard]] QString OrDash(const QString& text);
/// As the user writes a date.
[[nodiscard]] QString DateText(const CivilTime& time);
/// `moment` in its own zone.
[[nodiscard]] CivilTime CivilTimeOf(const QDateTime& moment);

}  // namespace orvalis
