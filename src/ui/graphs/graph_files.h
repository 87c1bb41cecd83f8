#pragma once

#include <QByteArray>
#include <QString>

class QCustomPlot;

namespace orvalis {

/// The plot as it is seen, as a PNG picture with twice its pixels.
[[nodiscard]] QByteArray PngOf(QCustomPlot& plot);
/// The same as a PDF document of one page with lines and letters in it, not pixels.
[[nodiscard]] QByteArray PdfOf(QCustomPlot& plot);

/// Makes `content` the whole of `path`, or leaves what is there. Returns why it could not, or nothing.
[[nodiscard]] QString WriteWholeFile(const QString& path, const QByteArray& content);

}  // namespace orvalis
