#pragma once

#include <QByteArray>
#include <QImage>

#include "ui/controls/file_saving.h"

class QCustomPlot;

namespace orvalis {

/// The current view of the plot at twice its resolution.
[[nodiscard]] QImage ImageOf(QCustomPlot& plot);
[[nodiscard]] QByteArray PngOf(const QImage& image);
/// The current view of the plot as a one-page PDF with vector graphics and text.
[[nodiscard]] QByteArray PdfOf(QCustomPlot& plot);

}  // namespace orvalis
