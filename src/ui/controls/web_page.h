#pragma once

#include <QString>
#include <QUrl>

class QWidget;

namespace orvalis {

/// Shows `url` in the user's browser. When there is none, or no address, a message over `parent` says so.
void OpenWebPage(const QUrl& url, QWidget* parent);

/// The standards body of the interface that clients see.
[[nodiscard]] QUrl StandardsPage();
/// The user's guide, a file of the program's own. Empty when it is not where it belongs.
[[nodiscard]] QUrl DocumentationPage();

}  // namespace orvalis
