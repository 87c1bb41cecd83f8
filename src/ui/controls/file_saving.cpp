#include "ui/controls/file_saving.h"

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
