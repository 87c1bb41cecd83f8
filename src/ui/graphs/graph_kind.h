#pragma once

#include <qcustomplot.h>

#include <QColor>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

#include "history/sample.h"
#include "reading/display_units.h"
#include "ui/controls/theme.h"

namespace orvalis {

/// One curve of a graph. Its marker identifies it where colours cannot.
struct CurveKind {
  Quantity quantity;
  const char* name;  ///< to be shown through Words::tr
  bool on_right_axis;
  QCPScatterStyle::ScatterShape marker;
  QRgb light;
  QRgb dark;
  int night;  ///< strength of the red, 0 to 255
};

/// What a graph window shows.
struct GraphKind {
  const char* object_name;
  const char* title;      ///< to be shown through Words::tr
  const char* file_name;  ///< in the name of a saved file
  std::span<const CurveKind> curves;

  [[nodiscard]] std::vector<Quantity> Quantities() const;
};

/// Sky, clear sky and ambient temperature and dew point.
[[nodiscard]] const GraphKind& TemperatureGraph();
/// Wind, gust and humidity.
[[nodiscard]] const GraphKind& WindGraph();
/// The counts of rain and light.
[[nodiscard]] const GraphKind& RainGraph();

/// "°C", "km/h", "%", "counts"
[[nodiscard]] QString UnitOf(Quantity quantity, const DisplayUnits& units);
/// "Temperature (°C)", "Rain (counts, more is wetter)"
[[nodiscard]] QString AxisLabel(Quantity quantity, const DisplayUnits& units);
/// Of a value as it is shown.
[[nodiscard]] int DecimalsOf(Quantity quantity);
/// An axis begins at 0 and reaches at least to this, in `units`; 0 for one that fits its values.
[[nodiscard]] double FullScale(Quantity quantity, const DisplayUnits& units);

[[nodiscard]] QColor CurveColour(const CurveKind& curve, Theme::Kind theme);

/// What the background shows: the weather's conditions, by the same numbers, and the verdict.
enum class Band : std::uint8_t { kClear, kPartlyCloudy, kCloudy, kRain, kSafe, kUnsafe };
inline constexpr std::size_t kBands = 6;
inline constexpr std::size_t kWeatherBands = 4;

/// "clear", "rain", "unsafe"
[[nodiscard]] QString NameOf(Band band);

/// Of the strip along the top that shows the verdict, in pixels.
inline constexpr int kStripHeight = 15;

/// How a band is painted in the background: with patterns and heights as well as colours, for users who cannot tell the
/// colours apart.
struct BandLook {
  QBrush brush;
  QColor ground;  ///< not valid: only the pattern
  QColor outline;
  int strip = 0;      ///< height of a strip along the top in `outline`, instead of the whole background
  bool word = false;  ///< the strip has the name on it, in `ink`, and its ends are marked below
  QColor ink;
};
[[nodiscard]] BandLook LookOf(Band band, Theme::Kind theme);

}  // namespace orvalis
