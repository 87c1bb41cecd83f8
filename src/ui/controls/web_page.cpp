#include "ui/controls/web_page.h"

#include <QCoreApplication>
#include <QFileInfo>

#include "ui/controls/message_box.h"
#include "ui/controls/words.h"
#include "ui/desktop.h"

namespace orvalis {

void OpenWebPage(const QUrl& url, QWidget* parent) {
  if (!url.isEmpty() && desktop::Open(url)) return;
  // The title is a leftover of the focuser template too.
  MessageBox box(QMessageBox::NoIcon, url.isEmpty() ? Fixed("Orvalis") : Fixed("Focus Simulator"),
                 url.isEmpty()
                     ? Words::tr("The guide is missing: it is one of the program's files. Install Orvalis again.")
                     : Fixed("It doesn't appear that you have a web browser installed on your system."),
                 QMessageBox::Ok, parent);
  box.exec();
}

QUrl StandardsPage() { return QUrl("https://ascom-standards.org"); }

QUrl DocumentationPage() {
  // Where the Windows installer puts it, and where the package and the build do, as seen from the executable.
  for (const char* place : {"docs", "../share/doc/orvalis"}) {
    const QFileInfo guide(QCoreApplication::applicationDirPath() + "/" + place + "/guide.html");
    if (guide.isReadable()) return QUrl::fromLocalFile(guide.canonicalFilePath());
  }
  return {};
}

}  // namespace orvalis
