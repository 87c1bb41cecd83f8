#pragma once

#include <QCoreApplication>
#include <QEvent>
#include <QPushButton>

#include "ui/controls/words.h"

namespace orvalis {

/// A window's wish for help, sent to one of its widgets. Whoever shows the guide filters it.
class HelpRequest : public QEvent {
 public:
  HelpRequest() : QEvent(Kind()) {}
  [[nodiscard]] static Type Kind() {
    static const auto kind = static_cast<Type>(registerEventType());
    return kind;
  }
};

/// Asks for help on the window of `widget`.
inline void AskForHelp(QWidget* widget) {
  HelpRequest request;
  QCoreApplication::sendEvent(widget, &request);
}

/// Makes `button` ask for help on its window, as F1 does there.
inline QPushButton* ForHelp(QPushButton* button) {
  button->setObjectName("cmdHelp");
  button->setToolTip(Words::tr("The guide, at this window's section (F1)"));
  button->setAccessibleDescription(button->toolTip());
  button->setAutoDefault(false);
  QObject::connect(button, &QPushButton::clicked, button, [button] { AskForHelp(button); });
  return button;
}

}  // namespace orvalis
