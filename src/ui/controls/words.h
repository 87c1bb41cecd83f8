#pragma once

#include <QCoreApplication>
#include <QString>

#include "base/message.h"

namespace orvalis {

/** What windows say outside of the classes that Qt knows: Words::tr("…"). Tables mark their texts with
    QT_TRANSLATE_NOOP("orvalis::Words", "…") and show them through Words::tr. */
struct Words {
  Q_DECLARE_TR_FUNCTIONS(orvalis::Words)
};

/** A text of the windows that is the same in every language. */
[[nodiscard]] inline QString Fixed(const char* text) { return QString::fromUtf8(text); }

/** The language of the windows, for the texts of the logic. */
[[nodiscard]] const Language& WindowLanguage();
/** What the logic tells, in the language of the windows. */
[[nodiscard]] QString Translated(const Message& message);

}  // namespace orvalis
