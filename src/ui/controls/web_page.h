#pragma once

#include <QString>
#include <QUrl>

class QWidget;

namespace orvalis {

/// Shows `url` in the user's browser. When there is none, a message over `parent` says so.
void OpenWebPage(const QUrl& url, QWidget* parent);

/// The standards body of the interface that clients see.
[[nodiscard]] QUrl StandardsPage();
/// The user's guide: the one installed with the program, otherwise the project's page.
[[nodiscard]] QUrl DocumentationPage();

}  // namespace orvalis
