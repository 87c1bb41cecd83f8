#include "ui/graphs/graph_files.h"

#include <qcustomplot.h>

#include <QBuffer>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>
#include <QTimer>
#include <atomic>
#include <chrono>
#include <memory>
#include <thread>
#include <utility>

namespace orvalis {
namespace {

/// The result that a thread leaves for the event loop.
struct Saving {
  QString failure;  ///< to be read when it has ended
  std::atomic<bool> ended = false;
};

std::atomic<int> g_saving = 0;

/// Returns why it failed, or an empty text.
QString WriteWholeFile(const QString& path, const QByteArray& content) {
  QSaveFile file(path);
  const bool written =
      !content.isEmpty() && file.open(QIODevice::WriteOnly) && file.write(content) == content.size() && file.commit();
  return written ? QString() : file.errorString();
}

}  // namespace

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

void SaveInBackground(QObject* context, const QString& path, FileContent content, FileSaved saved) {
  const auto saving = std::make_shared<Saving>();
  ++g_saving;
  // Nothing waits for this thread: the system may block it indefinitely.
  std::thread([saving, path, content = std::move(content)] {
    saving->failure = WriteWholeFile(path, content());
    --g_saving;
    saving->ended = true;
  }).detach();
  // Polled: the event loop may have ended by the time the thread returns.
  constexpr std::chrono::milliseconds kCheckInterval{20};
  auto* check = new QTimer(context);
  QObject::connect(check, &QTimer::timeout, check, [saving, saved = std::move(saved), check] {
    if (!saving->ended) return;
    check->stop();
    check->deleteLater();
    saved(saving->failure);
  });
  check->start(kCheckInterval);
}

bool IsSaving() { return g_saving > 0; }

}  // namespace orvalis
