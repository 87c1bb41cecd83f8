#include "ui/setup/port_box.h"

#include <QLineEdit>
#include <QSignalBlocker>
#include <QStyledItemDelegate>

#include "ui/controls/panel_texts.h"
#include "ui/controls/words.h"

namespace orvalis {
namespace {

constexpr int kDescriptionRole = Qt::UserRole;

/// The entries of the list carry their description; the text box shows the bare name, which is what is typed there.
class PortDelegate : public QStyledItemDelegate {
 public:
  using QStyledItemDelegate::QStyledItemDelegate;

 protected:
  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
    QStyledItemDelegate::initStyleOption(option, index);
    const QString description = index.data(kDescriptionRole).toString();
    if (!description.isEmpty()) option->text += "  –  " + description;
  }
};

}  // namespace

PortBox::PortBox(Ports ports, QWidget* parent) : QuietComboBox(parent), ports_(std::move(ports)) {
  setEditable(true);
  setLineEdit(new NightProof<QLineEdit>(this));
  setInsertPolicy(NoInsert);
  // Completion would turn a typed "2" into the "23" of the list.
  setCompleter(nullptr);
  setItemDelegate(new PortDelegate(this));
  setFocusPolicy(Qt::StrongFocus);
}

void PortBox::Refill() {
  const QString text = currentText();
  const QSignalBlocker quiet(this);  // the text is restored below
  clear();
  for (const SerialPortEntry& entry : ports_()) {
    addItem(ToQString(entry.name));
    setItemData(count() - 1, Translated(entry.description), kDescriptionRole);
  }
  if (!text.isEmpty() && findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive) < 0) insertItem(0, text);
  setCurrentIndex(findText(text, Qt::MatchFixedString | Qt::MatchCaseSensitive));
  setEditText(text);
}

void PortBox::SetPort(const std::string& port) {
  setEditText(ToQString(port));
  Refill();
}

std::string PortBox::port() const { return currentText().trimmed().toStdString(); }

QString PortBox::Description() const {
  const int index = findText(currentText().trimmed(), Qt::MatchFixedString | Qt::MatchCaseSensitive);
  return index < 0 ? QString() : itemData(index, kDescriptionRole).toString();
}

void PortBox::showPopup() {
  Refill();
  emit editTextChanged(currentText());  // the port may have another device now
  QuietComboBox::showPopup();
}

}  // namespace orvalis
