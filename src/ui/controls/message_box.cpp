#include "ui/controls/message_box.h"

#include <QPushButton>

#include "ui/controls/night_style.h"

namespace orvalis {

MessageBox::MessageBox(Icon icon, const QString& title, const QString& text, StandardButtons buttons, QWidget* parent)
    : QMessageBox(IsNight(parent) ? NoIcon : icon, title, text, buttons, parent), night_(IsNight(parent)) {
  setTextFormat(Qt::PlainText);
  if (!night_) return;
  setPalette(parent->window()->palette());  // which windows do not inherit
  for (QAbstractButton* button : this->buttons()) button->setIcon({});
}

QAbstractButton* MessageBox::AddButton(const QString& text, ButtonRole role) {
  QAbstractButton* button = addButton(text, role);
  if (night_) button->setIcon({});
  return button;
}

}  // namespace orvalis
