#include "ui/graphs/graph_kind.h"

#include <array>

#include "history/condition_bands.h"
#include "history/history_csv.h"
#include "ui/controls/panel_texts.h"

namespace orvalis {
namespace {

// The colours differ in lightness as well as in hue.
constexpr std::array kTemperatureCurves{
    CurveKind{Quantity::kSky, "Sky", false, QCPScatterStyle::ssDisc, 0xff005a94, 0xff6cc1f5, 255},
    CurveKind{Quantity::kClearSky, "Clear sky", false, QCPScatterStyle::ssSquare, 0xff8a3d99, 0xffd9a1e8, 190},
    CurveKind{Quantity::kAmbient, "Ambient", false, QCPScatterStyle::ssTriangle, 0xffb84300, 0xffffa360, 255},
    CurveKind{Quantity::kDewPoint, "Dew point", false, QCPScatterStyle::ssDiamond, 0xff00684a, 0xff53d6ab, 215},
};
constexpr std::array kWindCurves{
    CurveKind{Quantity::kWind, "Wind", false, QCPScatterStyle::ssDisc, 0xff005a94, 0xff6cc1f5, 255},
    CurveKind{Quantity::kGust, "Gust", false, QCPScatterStyle::ssTriangle, 0xffb84300, 0xffffa360, 190},
    CurveKind{Quantity::kHumidity, "Humidity", true, QCPScatterStyle::ssSquare, 0xff00684a, 0xff53d6ab, 220},
};

constexpr std::array kRainCurves{
    CurveKind{Quantity::kRain, "Rain", false, QCPScatterStyle::ssDisc, 0xff005a94, 0xff6cc1f5, 255},
    CurveKind{Quantity::kLight, "Light", true, QCPScatterStyle::ssSquare, 0xffb84300, 0xffffa360, 200},
};

/// How the values of a quantity that is no temperature are shown.
struct Scale {
  Quantity quantity;
  const char* name;
  const char* unit;  ///< nothing for what is shown in a unit of the user's choice
  const char* note;  ///< what more of it means, where that is not clear
  int decimals;
  double full;
};
constexpr std::array kScales{
    Scale{Quantity::kWind, "Wind", nullptr, "", 1, 10},
    Scale{Quantity::kGust, "Wind", nullptr, "", 1, 10},
    Scale{Quantity::kHumidity, "Humidity", "%", "", 1, 100},
    Scale{Quantity::kRain, "Rain", "counts", ", more is wetter", 0, 200},
    Scale{Quantity::kLight, "Light", "counts", ", more is darker", 0, 1023},
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
  static const GraphKind kind{"frmTempGraph", "Temperatures", "temperatures", kTemperatureCurves};
  return kind;
}

const GraphKind& WindGraph() {
  static const GraphKind kind{"frmWindGraph", "Wind and humidity", "wind", kWindCurves};
  return kind;
}

const GraphKind& RainGraph() {
  static const GraphKind kind{"frmRainGraph", "Rain and light", "rain-light", kRainCurves};
  return kind;
}

QString UnitOf(Quantity quantity, const DisplayUnits& units) {
  const Scale* scale = ScaleOf(quantity);
  if (scale == nullptr) return ToQString(units.TemperatureName());
  return scale->unit != nullptr ? scale->unit : ToQString(units.WindName());
}

QString AxisLabel(Quantity quantity, const DisplayUnits& units) {
  const Scale* scale = ScaleOf(quantity);
  return QString(scale != nullptr ? scale->name : "Temperature") + " (" + UnitOf(quantity, units) +
         (scale != nullptr ? scale->note : "") + ")";
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
  if (band == Band::kSafe) return "safe";
  return ToQString(Name(band == Band::kUnsafe ? Condition::kUnsafe : static_cast<Condition>(band)));
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
