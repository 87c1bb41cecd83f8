#include "ui/controls/setup_controls.h"

#include <QLineEdit>
#include <QPainter>
#include <QSignalBlocker>
#include <QStyleOptionButton>
#include <QStyledItemDelegate>
#include <QWheelEvent>

#include "base/text.h"
#include "ui/controls/panel_texts.h"

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

PathButton::PathButton(Shows shows, QWidget* parent) : QPushButton(parent), shows_(shows) {
  setAutoDefault(false);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  SetPath({});
}

void PathButton::SetPath(const std::string& path) {
  path_ = path;
  const std::string_view shown = shows_ == Shows::kName ? FileName(path_) : std::string_view(path_);
  setText(shown.empty() ? QString("Choose…") : ToQString(shown).replace("&", "&&"));
  setToolTip(ToQString(path_));
  update();
}

QSize PathButton::sizeHint() const {
  constexpr int kUsualCharacters = 20;
  return {fontMetrics().averageCharWidth() * kUsualCharacters, QPushButton::sizeHint().height()};
}

QSize PathButton::minimumSizeHint() const {
  constexpr int kFewestCharacters = 12;
  return {fontMetrics().averageCharWidth() * kFewestCharacters, QPushButton::minimumSizeHint().height()};
}

void PathButton::paintEvent(QPaintEvent* /*event*/) {
  QStyleOptionButton option;
  initStyleOption(&option);
  const QRect contents = style()->subElementRect(QStyle::SE_PushButtonContents, &option, this);
  constexpr int kMargin = 4;
  // A path is told by its end and a name by both ends.
  option.text = fontMetrics().elidedText(option.text, shows_ == Shows::kName ? Qt::ElideMiddle : Qt::ElideLeft,
                                         contents.width() - 2 * kMargin, Qt::TextShowMnemonic);
  QPainter painter(this);
  style()->drawControl(QStyle::CE_PushButton, &option, &painter, this);
}

PortBox::PortBox(Ports ports, QWidget* parent) : NightProof<QComboBox>(parent), ports_(std::move(ports)) {
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
  const QSignalBlocker quiet(this);  // in the end the text is what it was
  clear();
  for (const SerialPortEntry& entry : ports_()) {
    addItem(ToQString(entry.name));
    setItemData(count() - 1, ToQString(entry.description), kDescriptionRole);
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
  emit editTextChanged(currentText());  // what is plugged in at the same port may be another device now
  NightProof<QComboBox>::showPopup();
}

// Whoever scrolls the page with the pointer over the box does not want another port.
void PortBox::wheelEvent(QWheelEvent* event) { event->ignore(); }

}  // namespace orvalis
