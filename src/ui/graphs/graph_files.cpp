#include "ui/graphs/graph_files.h"

#include <qcustomplot.h>

#include <QBuffer>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>

namespace orvalis {

QByteArray PngOf(QCustomPlot& plot) {
  constexpr double kScale = 2;
  QByteArray content;
  QBuffer buffer(&content);
  buffer.open(QIODevice::WriteOnly);
  plot.toPixmap(plot.width(), plot.height(), kScale).save(&buffer, "PNG");
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

QString WriteWholeFile(const QString& path, const QByteArray& content) {
  QSaveFile file(path);
  const bool written =
      !content.isEmpty() && file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit();
  return written ? QString() : file.errorString();
}

}  // namespace orvalis
