#pragma once

#include <QMessageBox>

namespace orvalis {

/// A message in plain text over `parent`, in its colours. At night it has no icons, which would be coloured.
class MessageBox : public QMessageBox {
 public:
  MessageBox(Icon icon, const QString& title, const QString& text, StandardButtons buttons, QWidget* parent);

  /// For a button beside the standard ones.
  QAbstractButton* AddButton(const QString& text, ButtonRole role);

 private:
  bool night_;
};

}  // namespace orvalis
