#include "ui/controls/text_fit.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QStringList>
#include <algorithm>
#include <cmath>

namespace orvalis {

QFont FitFont(QFont font, const QString& text, QSizeF space, double smallest, double largest) {
  // Measured once at a large size: letters scale well enough that trying sizes one after the other is not needed.
  constexpr int kMeasured = 200;
  font.setPixelSize(kMeasured);
  const QFontMetricsF metrics(font);
  const double width = std::max(1.0, metrics.horizontalAdvance(text));
  const double fitting = std::min(space.width() / width, space.height() / metrics.height()) * kMeasured;
  font.setPixelSize(static_cast<int>(std::max(1.0, std::floor(std::clamp(fitting, smallest, largest)))));
  return font;
}

QFont ScaledFont(QFont font, double factor) {
  if (font.pixelSize() > 0) {
    font.setPixelSize(std::max(1, static_cast<int>(std::lround(font.pixelSize() * factor))));
  } else {
    font.setPointSizeF(font.pointSizeF() * factor);
  }
  return font;
}

QFont FixedPitchFont() {
  QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
  font.setFamilies(QStringList{"Courier", "Courier New", "Liberation Mono", "DejaVu Sans Mono", font.family()});
  font.setStyleHint(QFont::TypeWriter);
  font.setFixedPitch(true);
  return font;
}

double PixelSize(const QFont& font) { return QFontInfo(font).pixelSize(); }

}  // namespace orvalis
