#pragma once

#include <QCoreApplication>
#include <QString>

namespace orvalis {

/** What windows say outside of the classes that Qt knows: Words::tr("…"). Tables mark their texts with
    QT_TRANSLATE_NOOP("orvalis::Words", "…") and show them through Words::tr. */
struct Words {
  Q_DECLARE_TR_FUNCTIONS(orvalis::Words)
};

/** A text of the windows that is the same in every language. */
[[nodiscard]] inline QString Fixed(const char* text) { return QString::fromUtf8(text); }

}  // namespace orvalis
