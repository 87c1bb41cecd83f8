#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

class QObject;

namespace orvalis {

/// Produces the content of a file. Called on another thread, so it holds copies of all it needs.
using FileContent = std::function<QByteArray()>;
/// Called with the reason why a file could not be written, or an empty text.
using FileSaved = std::function<void(const QString& failure)>;

/// Replaces the file at `path` by `content`, or leaves it unchanged. A disk that does not respond, such as one on an
/// unavailable network, blocks nothing. `saved` is called from the event loop, unless `context` is gone by then.
void SaveInBackground(QObject* context, const QString& path, FileContent content, FileSaved saved);

/// Whether a file is still being written, which cannot be stopped.
[[nodiscard]] bool IsSaving();

}  // namespace orvalis
