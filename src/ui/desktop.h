#pragma once

#include <QPixmap>
#include <QString>
#include <QUrl>
#include <optional>

class QWidget;

/// What the windows ask of the desktop, each in the desktop's own way. Implemented once per operating system.
namespace orvalis::desktop {

/// Called once, before the first window is made.
void Prepare();

/// Whether file dialogs need a process of their own, because one that waits for a folder would hold up the program. A
/// desktop whose own dialogs wait on threads of theirs does without.
[[nodiscard]] bool FileDialogsBlock();

/// Puts `window` above all others, or back among them. Its place stays, and whether it is shown.
void KeepOnTop(QWidget& window, bool on);

/// A picture of `window`, whether it is seen or not.
[[nodiscard]] QPixmap PictureOf(QWidget& window);

/// Asks the desktop to open `address` with what the user has for it. False when the desktop says that there is nothing.
[[nodiscard]] bool Open(const QUrl& address);

/// Asks for a folder, starting at `current`. Nothing when the user cancels.
[[nodiscard]] std::optional<QString> AskForFolder(QWidget* parent, const QString& title, const QString& current);

}  // namespace orvalis::desktop
