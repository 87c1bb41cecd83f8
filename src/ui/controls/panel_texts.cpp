#include "ui/controls/panel_texts.h"

#include <QCoreApplication>

namespace orvalis {
namespace {

QDate DateOf(const CivilTime& time) { return {time.year, time.month, time.day}; }

}  // namespace

BigWordText VerdictText(const PanelModel& model, QDate today, const TimeStyle& style) {
  if (model.stale || !model.safe) return {"NO DATA", StaleSinceText(model.fresh_at, today, style), std::nullopt};
  const QString detail = model.fresh_at ? "reading at " + ToQString(style.time(*model.fresh_at)) : QString();
  if (*model.safe) return {"SAFE", detail, Colour::kGreen};
  return {"UNSAFE", detail, Colour::kRed};
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
  if (!model.difference.empty()) shown.detail += ", difference " + ToQString(model.difference) + " °C";
  return shown;
}

QString StaleSinceText(const std::optional<CivilTime>& fresh_at, QDate today, const TimeStyle& style) {
  if (!fresh_at) return "no reading yet";
  QString when = ToQString(style.time(*fresh_at));
  if (DateOf(*fresh_at) != today) when.prepend(ToQString(style.date(*fresh_at)) + " ");
  return "no reading since " + when;
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
