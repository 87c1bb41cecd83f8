#include "ui/controls/web_page.h"

#include <QCoreApplication>
#include <QFileInfo>

#include "ui/controls/message_box.h"
#include "ui/desktop.h"

namespace orvalis {

void OpenWebPage(const QUrl& url, QWidget* parent) {
  if (desktop::Open(url)) return;
  // The title is a leftover of the focuser template too.
  MessageBox box(QMessageBox::NoIcon, "Focus Simulator",
                 "It doesn't appear that you have a web browser installed on your system.", QMessageBox::Ok, parent);
  box.exec();
}

QUrl StandardsPage() { return QUrl("https://ascom-standards.org"); }

QUrl DocumentationPage() {
  const QFileInfo installed(QCoreApplication::applicationDirPath() + "/../share/doc/orvalis/guide.md");
  if (installed.isReadable()) return QUrl::fromLocalFile(installed.canonicalFilePath());
  return QUrl("https://orvalis.example/guide");
}

}  // namespace orvalis
