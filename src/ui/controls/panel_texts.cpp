#include "ui/controls/panel_texts.h"

#include <QCoreApplication>
#include <QLocale>
#include <algorithm>
#include <array>

#include "base/text.h"
#include "ui/controls/words.h"

namespace orvalis {
namespace {

struct Meaning {
  std::string_view word;
  const char* text;
};
// The words are the same in every language.
constexpr std::array kMeanings{Meaning{"Clear", QT_TRANSLATE_NOOP("orvalis::Words", "clear")},
                               Meaning{"PCloudy", QT_TRANSLATE_NOOP("orvalis::Words", "partly cloudy")},
                               Meaning{"Cloudy", QT_TRANSLATE_NOOP("orvalis::Words", "cloudy")},
                               Meaning{"Calm", QT_TRANSLATE_NOOP("orvalis::Words", "calm")},
                               Meaning{"Breeze", QT_TRANSLATE_NOOP("orvalis::Words", "breeze")},
                               Meaning{"Windy", QT_TRANSLATE_NOOP("orvalis::Words", "windy")},
                               Meaning{"Dry", QT_TRANSLATE_NOOP("orvalis::Words", "dry")},
                               Meaning{"Damp", QT_TRANSLATE_NOOP("orvalis::Words", "damp")},
                               Meaning{"Rain", QT_TRANSLATE_NOOP("orvalis::Words", "rain")},
                               Meaning{"Dark", QT_TRANSLATE_NOOP("orvalis::Words", "dark")},
                               Meaning{"Dusk", QT_TRANSLATE_NOOP("orvalis::Words", "dusk")},
                               Meaning{"Day", QT_TRANSLATE_NOOP("orvalis::Words", "day")}};

}  // namespace

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
    shown.detail = Words::tr("last known sky");
    return shown;
  }
  shown.colour = model.cloud.colour;
  shown.detail = WordMeaning(model.cloud.text);
  if (shown.detail.isEmpty()) shown.detail = Words::tr("sky");
  if (const std::string& difference = model.shown.difference; !difference.empty()) {
    shown.detail = Words::tr("%1, difference %2 %3")
                       .arg(shown.detail, ToQString(difference), ToQString(model.units.TemperatureName()));
  }
  return shown;
}

QString TemperatureUnit(bool centigrade) { return centigrade ? "°C" : "°F"; }

QString WordMeaning(std::string_view word) {
  const auto found = std::ranges::find(kMeanings, word, &Meaning::word);
  if (found == kMeanings.end()) return {};
  const QString meaning = Words::tr(found->text);
  // In the word's own language most need no explanation.
  return meaning.compare(ToQString(word), Qt::CaseInsensitive) == 0 ? QString() : meaning;
}

QString SwitchMeaning(std::string_view sign) {
  if (sign == "Y") return Words::tr("on");
  if (sign == "?") return Words::tr("undetermined");
  if (sign == "N") return Words::tr("off");
  return {};
}

QString ToQString(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }

QString DecimalText(double value, int decimals) {
  const char separator = QLocale().decimalPoint() == "," ? ',' : '.';
  return ToQString(FormatFixed(value, decimals, {.decimal_separator = separator}));
}

QString OrDash(const QString& text) { return text.isEmpty() ? QStringLiteral("–") : text; }

}  // namespace orvalis
