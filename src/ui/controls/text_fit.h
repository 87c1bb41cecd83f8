#pragma once

#include <QFont>
#include <QSizeF>
#include <QString>

namespace orvalis {

/// `font` as large as lets `text` fit into `space` on one line, between `smallest` and `largest` pixels.
[[nodiscard]] QFont FitFont(QFont font, const QString& text, QSizeF space, double smallest, double largest);

/// `font`, `factor` times as large, whether its size is in points or in pixels.
[[nodiscard]] QFont ScaledFont(QFont font, double factor);

/// "Courier", or what the system has in its place: letters of one width in any case.
[[nodiscard]] QFont FixedPitchFont();

/// The pixel size of `font`.
[[nodiscard]] double PixelSize(const QFont& font);

}  // namespace orvalis
