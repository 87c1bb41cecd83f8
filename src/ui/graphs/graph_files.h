#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>
#include <functional>

class QCustomPlot;
class QObject;

namespace orvalis {

/// The plot as it is seen, with twice its pixels.
[[nodiscard]] QImage ImageOf(QCustomPlot& plot);
[[nodiscard]] QByteArray PngOf(const QImage& image);
/// The plot as it is seen as a PDF document of one page with lines and letters in it, not pixels.
[[nodiscard]] QByteArray PdfOf(QCustomPlot& plot);

/// What is to be in a file. Asked for on another thread, so it holds copies of all that it needs.
using FileContent = std::function<QByteArray()>;
/// Gets why a file could not be written, or an empty text.
using FileSaved = std::function<void(const QString& failure)>;

/// Makes `content` the whole of `path`, or leaves what is there. A disk that does not answer, as on a network that is
/// gone, holds up nobody. `saved` is called from the event loop, unless `context` is gone by then.
void SaveInBackground(QObject* context, const QString& path, FileContent content, FileSaved saved);

/// Whether a file is still being written, which cannot be stopped.
[[nodiscard]] bool IsSaving();

}  // namespace orvalis
