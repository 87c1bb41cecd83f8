#include "ui/controls/words.h"

namespace orvalis {

const Language& WindowLanguage() {
  static const Language language = [](const char* english) {
    return QCoreApplication::translate("orvalis::Message", english).toStdString();
  };
  return language;
}

QString Translated(const Message& message) { return QString::fromStdString(message.In(WindowLanguage())); }

}  // namespace orvalis
