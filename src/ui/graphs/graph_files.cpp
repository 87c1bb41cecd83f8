#include "ui/graphs/graph_files.h"

#include <qcustomplot.h>

#include <QBuffer>
#include <QPageSize>
#include <QPdfWriter>

namespace orvalis {

QImage ImageOf(QCustomPlot& plot) {
  constexpr double kScale = 2;
  return plot.toPixmap(plot.width(), plot.height(), kScale).toImage();
}

QByteArray PngOf(const QImage& image) {
  QByteArray content;
  QBuffer buffer(&content);
  buffer.open(QIODevice::WriteOnly);
  image.save(&buffer, "PNG");
  return content;
}

QByteArray PdfOf(QCustomPlot& plot) {
  constexpr double kPointsPerInch = 72;
  QByteArray content;
  QBuffer buffer(&content);
  buffer.open(QIODevice::WriteOnly);
  {
    QPdfWriter writer(&buffer);
    writer.setTitle(plot.accessibleName());
    // The screen's resolution, so that letters take the room on paper that they were given on the screen.
    const int dots = plot.logicalDpiX();
    writer.setResolution(dots);
    writer.setPageSize(
        QPageSize(QSizeF(plot.size()) * kPointsPerInch / dots, QPageSize::Point, {}, QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    QCPPainter painter(&writer);
    painter.setMode(QCPPainter::pmVectorized);
    painter.setMode(QCPPainter::pmNoCaching);
    plot.toPainter(&painter, plot.width(), plot.height());
  }
  return content;
}

}  // namespace orvalis
