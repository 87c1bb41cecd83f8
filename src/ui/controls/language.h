#pragma once

#include <QString>
#include <QStringList>

namespace orvalis {

/// The languages that the windows have: "en", and one for each translation in the program.
[[nodiscard]] QStringList Languages();

/// The one of `Languages` that `language` names, as "de", "DE" and "de-AT" name "de"; "" where it names none.
[[nodiscard]] QString KnownLanguage(const QString& language);
/// Among `Languages` the first that a person wants, "en" where there is none of them. `wanted` as QLocale::uiLanguages
/// has them: "de-AT", "de", "C".
[[nodiscard]] QString FirstKnown(const QStringList& wanted);
/// That of the user's locale.
[[nodiscard]] QString LanguageOfLocale();

/// Lets the windows that are made from now on speak `language`, one of `Languages`.
void UseLanguage(const QString& language);
/// What `UseLanguage` was called with; "en" before.
[[nodiscard]] const QString& UsedLanguage();

}  // namespace orvalis
