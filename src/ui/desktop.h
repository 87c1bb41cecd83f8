#pragma once

#include <QPixmap>
#include <QString>
#include <QUrl>
#include <optional>

class QWidget;

/// Desktop services for the windows. Implemented once per operating system.
namespace orvalis::desktop {

/// Called once, before the first window is created.
void Prepare();

/// Whether file dialogs need a process of their own, because one that waits for a folder would block the program. Not
/// on a desktop whose dialogs use threads of their own.
[[nodiscard]] bool FileDialogsBlock();

/// Keeps `window` on top of all others, or no longer. Position and visibility stay the same.
void KeepOnTop(QWidget& window, bool on);

/// A picture of `window`, visible or not.
[[nodiscard]] QPixmap PictureOf(QWidget& window);

/// Opens `address` with the user's default program. False when there is none.
[[nodiscard]] bool Open(const QUrl& address);

/// Asks for a folder, starting at `current`. Nothing when the user cancels.
[[nodiscard]] std::optional<QString> AskForFolder(QWidget* parent, const QString& title, const QString& current);

}  // namespace orvalis::desktop
