#include "ui/controls/panel_texts.h"

#include <QCoreApplication>

namespace orvalis {

BigWordText VerdictText(const VerdictBanner& banner) {
  QStringList lines;
  for (const std::string& line : {banner.reason, banner.since}) {
    if (!line.empty()) lines += ToQString(line);
  }
  return {ToQString(banner.word), lines.join('\n'), ColourOf(banner.state)};
}

Colour ColourOf(VerdictBanner::State state) {
  switch (state) {
    case VerdictBanner::State::kSafe:
      return Colour::kGreen;
    case VerdictBanner::State::kSafeDemo:
    case VerdictBanner::State::kSafeSoon:
      return Colour::kYellow;
    case VerdictBanner::State::kUnsafe:
      break;
  }
  return Colour::kRed;
}

BigWordText SkyText(const PanelModel& model) {
  BigWordText shown{OrDash(ToQString(model.cloud.text)), {}, std::nullopt};
  if (model.cloud.text.empty()) return shown;
  if (model.stale) {
    shown.detail = "last known sky";
    return shown;
  }
  shown.colour = model.cloud.colour;
  shown.detail = SkyMeaning(model.cloud.text);
  if (shown.detail.isEmpty()) shown.detail = "sky";
  if (const std::string& difference = model.shown.difference; !difference.empty()) {
    shown.detail += ", difference " + ToQString(difference) + " " + ToQString(model.units.TemperatureName());
  }
  return shown;
}

QString TemperatureUnit(bool centigrade) { return centigrade ? "°C" : "°F"; }

QString SkyMeaning(std::string_view word) { return word == "PCloudy" ? "partly cloudy" : QString(); }

QString SwitchMeaning(std::string_view sign) {
  if (sign == "Y") return "on";
  if (sign == "?") return "undetermined";
  if (sign == "N") return "off";
  return {};
}

QString ToQString(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

QString OrDash(const QString& text) { return text.isEmpty() ? QStringLiteral("–") : text; }

}  // namespace orvalis
