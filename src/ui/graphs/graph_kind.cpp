#include "ui/graphs/graph_kind.h"

#include <array>

#include "history/history_csv.h"
#include "ui/controls/panel_texts.h"
#include "ui/controls/words.h"

namespace orvalis {
namespace {

// The colours differ in lightness as well as in hue.
constexpr std::array kTemperatureCurves{
    //: The temperature of the sky, as the next ones are temperatures.
    CurveKind{Quantity::kSky, QT_TRANSLATE_NOOP("orvalis::Words", "Sky"), false, QCPScatterStyle::ssDisc, 0xff005a94,
              0xff6cc1f5, 255},
    //: How cold the sky is when it is clear.
    CurveKind{Quantity::kClearSky, QT_TRANSLATE_NOOP("orvalis::Words", "Clear sky"), false, QCPScatterStyle::ssSquare,
              0xff8a3d99, 0xffd9a1e8, 190},
    CurveKind{Quantity::kAmbient, QT_TRANSLATE_NOOP("orvalis::Words", "Ambient"), false, QCPScatterStyle::ssTriangle,
              0xffb84300, 0xffffa360, 255},
    CurveKind{Quantity::kDewPoint, QT_TRANSLATE_NOOP("orvalis::Words", "Dew point"), false, QCPScatterStyle::ssDiamond,
              0xff00684a, 0xff53d6ab, 215},
};
constexpr std::array kWindCurves{
    CurveKind{Quantity::kWind, QT_TRANSLATE_NOOP("orvalis::Words", "Wind"), false, QCPScatterStyle::ssDisc, 0xff005a94,
              0xff6cc1f5, 255},
    CurveKind{Quantity::kGust, QT_TRANSLATE_NOOP("orvalis::Words", "Gust"), false, QCPScatterStyle::ssTriangle,
              0xffb84300, 0xffffa360, 190},
    CurveKind{Quantity::kHumidity, QT_TRANSLATE_NOOP("orvalis::Words", "Humidity"), true, QCPScatterStyle::ssSquare,
              0xff00684a, 0xff53d6ab, 220},
};

constexpr std::array kRainCurves{
    CurveKind{Quantity::kRain, QT_TRANSLATE_NOOP("orvalis::Words", "Rain"), false, QCPScatterStyle::ssDisc, 0xff005a94,
              0xff6cc1f5, 255},
    //: The light of the sky.
    CurveKind{Quantity::kLight, QT_TRANSLATE_NOOP("orvalis::Words", "Light"), true, QCPScatterStyle::ssSquare,
              0xffb84300, 0xffffa360, 200},
};

/// How the values of a quantity that is no temperature are shown.
struct Scale {
  Quantity quantity;
  const char* name;
  const char* unit;  ///< nothing for what is shown in a unit of the user's choice
  const char* note;  ///< the unit at the axis, with what more of it means, where that is not clear
  int decimals;
  double full;
};
constexpr std::array kScales{
    Scale{Quantity::kWind, QT_TRANSLATE_NOOP("orvalis::Words", "Wind"), nullptr, nullptr, 1, 10},
    Scale{Quantity::kGust, QT_TRANSLATE_NOOP("orvalis::Words", "Wind"), nullptr, nullptr, 1, 10},
    Scale{Quantity::kHumidity, QT_TRANSLATE_NOOP("orvalis::Words", "Humidity"), "%", nullptr, 1, 100},
    Scale{Quantity::kRain, QT_TRANSLATE_NOOP("orvalis::Words", "Rain"),
          //: After a number: what a sensor counts, a reading without a unit.
          QT_TRANSLATE_NOOP("orvalis::Words", "counts"), QT_TRANSLATE_NOOP("orvalis::Words", "counts, more is wetter"),
          0, 200},
    Scale{Quantity::kLight, QT_TRANSLATE_NOOP("orvalis::Words", "Light"), QT_TRANSLATE_NOOP("orvalis::Words", "counts"),
          QT_TRANSLATE_NOOP("orvalis::Words", "counts, more is darker"), 0, 1023},
};

/// Nothing for temperatures.
const Scale* ScaleOf(Quantity quantity) {
  for (const Scale& scale : kScales) {
    if (scale.quantity == quantity) return &scale;
  }
  return nullptr;
}

QBrush Hatch(const QColor& colour, Qt::BrushStyle style) { return {colour, style}; }

}  // namespace

std::vector<Quantity> GraphKind::Quantities() const {
  std::vector<Quantity> quantities;
  for (const CurveKind& curve : curves) quantities.push_back(curve.quantity);
  return quantities;
}

const GraphKind& TemperatureGraph() {
  static const GraphKind kind{"frmTempGraph", QT_TRANSLATE_NOOP("orvalis::Words", "Temperatures"), "temperatures",
                              kTemperatureCurves};
  return kind;
}

const GraphKind& WindGraph() {
  static const GraphKind kind{"frmWindGraph", QT_TRANSLATE_NOOP("orvalis::Words", "Wind and humidity"), "wind",
                              kWindCurves};
  return kind;
}

const GraphKind& RainGraph() {
  static const GraphKind kind{"frmRainGraph", QT_TRANSLATE_NOOP("orvalis::Words", "Rain and light"), "rain-light",
                              kRainCurves};
  return kind;
}

QString UnitOf(Quantity quantity, const DisplayUnits& units) {
  const Scale* scale = ScaleOf(quantity);
  if (scale == nullptr) return ToQString(units.TemperatureName());
  return scale->unit != nullptr ? Words::tr(scale->unit) : ToQString(units.WindName());
}

QString AxisLabel(Quantity quantity, const DisplayUnits& units) {
  const Scale* scale = ScaleOf(quantity);
  const QString name = scale != nullptr ? Words::tr(scale->name) : Words::tr("Temperature");
  const bool noted = scale != nullptr && scale->note != nullptr;
  //: At an axis: what it shows, and its unit.
  return Words::tr("%1 (%2)").arg(name, noted ? Words::tr(scale->note) : UnitOf(quantity, units));
}

int DecimalsOf(Quantity quantity) {
  const Scale* scale = ScaleOf(quantity);
  return scale != nullptr ? scale->decimals : 1;
}

double FullScale(Quantity quantity, const DisplayUnits& units) {
  const Scale* scale = ScaleOf(quantity);
  return scale != nullptr ? ShownValue(quantity, scale->full, units) : 0;
}

QColor CurveColour(const CurveKind& curve, Theme::Kind theme) {
  switch (theme) {
    case Theme::Kind::kLight:
      return QColor::fromRgb(curve.light);
    case Theme::Kind::kDark:
      return QColor::fromRgb(curve.dark);
    case Theme::Kind::kNight:
      break;
  }
  return {curve.night, 0, 0};
}

QString NameOf(Band band) {
  static constexpr std::array kNames{
      //: Of the sky.
      QT_TRANSLATE_NOOP("orvalis::Words", "clear"), QT_TRANSLATE_NOOP("orvalis::Words", "partly cloudy"),
      QT_TRANSLATE_NOOP("orvalis::Words", "cloudy"), QT_TRANSLATE_NOOP("orvalis::Words", "rain"),
      //: The verdict: a roof may be open.
      QT_TRANSLATE_NOOP("orvalis::Words", "safe"),
      //: The verdict: a roof must be closed. It is also shown in capital letters.
      QT_TRANSLATE_NOOP("orvalis::Words", "unsafe")};
  static_assert(kNames.size() == kBands);
  return Words::tr(kNames.at(static_cast<std::size_t>(band)));
}

BandLook LookOf(Band band, Theme::Kind theme) {
  struct Row {
    Qt::BrushStyle pattern;
    // Ground, pattern and outline for each theme; 0 is none.
    std::array<QRgb, 3> light;
    std::array<QRgb, 3> dark;
    std::array<QRgb, 3> night;
    int strip = 0;
  };
  constexpr int kSafeHeight = 4;
  static constexpr std::array<Row, kBands> kRows{{
      {Qt::NoBrush, {0xffe6f4e9, 0, 0xff9ccfab}, {0xff16301f, 0, 0xff2f6943}, {0, 0, 0xff780000}},
      {Qt::Dense7Pattern, {0, 0xffb7b7b7, 0xffa8a8a8}, {0, 0xff5a5a5a, 0xff686868}, {0, 0xff780000, 0xff780000}},
      {Qt::BDiagPattern,
       {0xffececec, 0xffc4c4c4, 0xffa0a0a0},
       {0xff303236, 0xff55585e, 0xff7a7d84},
       {0, 0xff5a0000, 0xff780000}},
      {Qt::VerPattern, {0, 0xff6aa5dc, 0xff4a86c5}, {0, 0xff3f6f9f, 0xff5a93cc}, {0, 0xff820000, 0xffa00000}},
      {Qt::NoBrush, {0, 0, 0xff2f8a4e}, {0, 0, 0xff4fae70}, {0, 0, 0xff8c0000}, kSafeHeight},
      {Qt::NoBrush, {0, 0, 0xffb4231e}, {0, 0, 0xffc23a33}, {0, 0, 0xffff0000}, kStripHeight},
  }};
  const Row& row = kRows[static_cast<std::size_t>(band)];
  const auto& [ground, pattern, outline] =
      theme == Theme::Kind::kLight ? row.light : (theme == Theme::Kind::kDark ? row.dark : row.night);
  BandLook look;
  if (pattern != 0) look.brush = Hatch(QColor::fromRgb(pattern), row.pattern);
  if (ground != 0) look.ground = QColor::fromRgb(ground);
  look.outline = QColor::fromRgb(outline);
  look.strip = row.strip;
  look.word = band == Band::kUnsafe;
  look.ink = theme == Theme::Kind::kNight ? Qt::black : Qt::white;
  return look;
}

}  // namespace orvalis
