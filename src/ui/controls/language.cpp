#include "ui/controls/language.h"

#include <QCoreApplication>
#include <QDir>
#include <QLibraryInfo>
#include <QLocale>
#include <QRegularExpression>
#include <QTranslator>
#include <algorithm>
#include <memory>
#include <vector>

namespace orvalis {
namespace {

const QString kFolder = QStringLiteral(":/translations");
const QString kFile = QStringLiteral("orvalis_");

struct InUse {
  QString language = QStringLiteral("en");
  std::vector<std::unique_ptr<QTranslator>> translators;
};
InUse& Current() {
  static InUse in_use;
  return in_use;
}

void Install(const QString& file, const QString& folder) {
  auto translator = std::make_unique<QTranslator>();
  if (!translator->load(file, folder)) return;
  QCoreApplication::installTranslator(translator.get());
  Current().translators.push_back(std::move(translator));
}

}  // namespace

QStringList Languages() {
  QStringList languages{"en"};
  for (const QString& file : QDir(kFolder).entryList({kFile + "*.qm"})) {
    languages += file.mid(kFile.size()).section('.', 0, 0);
  }
  return languages;
}

QString KnownLanguage(const QString& language) {
  // A language, and what tells its kind: "de", "de-AT", "zh_Hans_CN".
  static const QRegularExpression tag("^([A-Za-z]{2,3})(?:[-_][A-Za-z0-9]{2,8})*$");
  const QRegularExpressionMatch match = tag.match(language);
  if (!match.hasMatch()) return {};
  const QStringList known = Languages();
  for (const QString& wanted : {QString(language).replace('-', '_'), match.captured(1)}) {
    const auto found = std::ranges::find_if(
        known, [&wanted](const QString& name) { return name.compare(wanted, Qt::CaseInsensitive) == 0; });
    if (found != known.end()) return *found;
  }
  return {};
}

QString FirstKnown(const QStringList& wanted) {
  for (const QString& language : wanted) {
    if (QString known = KnownLanguage(language); !known.isEmpty()) return known;
  }
  return Languages().constFirst();
}

QString LanguageOfLocale() {
  const QLocale locale = QLocale::system();
  // As for other programs: in the locale "C" a list of languages counts for nothing.
  return locale.language() == QLocale::C ? FirstKnown({}) : FirstKnown(locale.uiLanguages());
}

void UseLanguage(const QString& language) {
  Current().translators.clear();  // which takes them out of use
  Current().language = language;
  // The toolkit's own texts, where the system has them. Ours come first, with those that the windows cannot do without.
  Install("qtbase_" + language, QLibraryInfo::path(QLibraryInfo::TranslationsPath));
  Install(kFile + language, kFolder);
}

const QString& UsedLanguage() { return Current().language; }

}  // namespace orvalis
