#include "ui/desktop.h"

#include <QDesktopServices>
#include <QFileDialog>
#include <QWidget>

namespace orvalis::desktop {

// The desktop's own style follows its palette.
void Prepare() {}

bool FileDialogsBlock() { return true; }

void KeepOnTop(QWidget& window, bool on) {
  if (window.windowFlags().testFlag(Qt::WindowStaysOnTopHint) == on) return;
  // Changing the flags hides the window and may make the window manager move it.
  const bool was_visible = window.isVisible();
  const QPoint position = window.pos();
  window.setWindowFlag(Qt::WindowStaysOnTopHint, on);
  window.move(position);
  if (was_visible) window.show();
}

QPixmap PictureOf(QWidget& window) { return window.grab(); }

bool Open(const QUrl& address) { return QDesktopServices::openUrl(address); }

std::optional<QString> AskForFolder(QWidget* parent, const QString& title, const QString& current) {
  const QString folder = QFileDialog::getExistingDirectory(parent, title, current);
  return folder.isEmpty() ? std::nullopt : std::optional(folder);
}

}  // namespace orvalis::desktop
