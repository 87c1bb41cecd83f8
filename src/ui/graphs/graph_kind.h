#pragma once

#include <qcustomplot.h>

#include <QColor>
#include <span>
#include <vector>

#include "history/sample.h"
#include "ui/controls/theme.h"

namespace orvalis {

/// One curve of a graph. Its marker identifies it where colours cannot.
struct CurveKind {
  Quantity quantity;
  const char* name;
  bool on_right_axis;
  QCPScatterStyle::ScatterShape marker;
  QRgb light;
  QRgb dark;
  int night;  ///< strength of the red, 0 to 255
};

/// What a graph window shows.
struct GraphKind {
  const char* object_name;
  const char* title;
  std::span<const CurveKind> curves;

  [[nodiscard]] std::vector<Quantity> Quantities() const;
};

/// Sky, clear sky and ambient temperature and dew point.
[[nodiscard]] const GraphKind& TemperatureGraph();
/// Wind, gust and humidity.
[[nodiscard]] const GraphKind& WindGraph();

/// "°C", "°F", "mph", "%"
[[nodiscard]] QString UnitOf(Quantity quantity, bool centigrade);

[[nodiscard]] QColor CurveColour(const CurveKind& curve, Theme::Kind theme);

/// How a condition is painted in the background: with patterns as well as colours, for users who cannot tell the
/// colours apart.
struct BandLook {
  QBrush brush;
  QColor ground;  ///< not valid: only the pattern
  QColor outline;
  bool strip = false;  ///< also a strip along the top, in `outline` with the word in `ink`
  QColor ink;
};
[[nodiscard]] BandLook LookOf(Condition condition, Theme::Kind theme);

}  // namespace orvalis
