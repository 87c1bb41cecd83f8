#include "ui/setup_controls.h"

#include <QLineEdit>
#include <QPainter>
#include <QPainterPath>
#include <QSignalBlocker>
#include <QStyleOptionButton>
#include <QStyledItemDelegate>
#include <QWheelEvent>

#include "base/text.h"
#include "ui/panel_texts.h"

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

LogoButton::LogoButton(Picture picture, QWidget* parent) : QAbstractButton(parent), picture_(picture) {
  setCursor(Qt::PointingHandCursor);
  setFocusPolicy(Qt::TabFocus);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize LogoButton::sizeHint() const {
  constexpr int kSide = 36;
  return {kSide, kSide};
}

void LogoButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  // The window's palette: with a style sheet in force, a control that no rule names loses what it inherited.
  const QPalette colours = window()->palette();
  const QColor ink = colours.color(QPalette::WindowText);
  if (hasFocus()) {
    painter.setPen(QPen(colours.color(QPalette::Highlight), 1.5));
    painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 4, 4);
  }
  constexpr double kGrid = 32;  // the pictures are drawn on a grid of this many units
  painter.translate(rect().center() + QPointF(0.5, 0.5));
  painter.scale((width() - 6) / kGrid, (height() - 6) / kGrid);
  painter.setPen(QPen(ink, underMouse() ? 2.4 : 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  if (picture_ == Picture::kStandards) {
    // A dome with its slit open, and a star.
    painter.drawLine(QPointF(-14, 12), QPointF(14, 12));
    painter.drawArc(QRectF(-11, -8, 22, 22), 0, 180 * 16);
    painter.drawLine(QPointF(-11, 3), QPointF(-11, 12));
    painter.drawLine(QPointF(11, 3), QPointF(11, 12));
    painter.drawLine(QPointF(2, -7.5), QPointF(2, 5));
    painter.drawLine(QPointF(7, -5), QPointF(7, 5));
    painter.drawLine(QPointF(2, 5), QPointF(7, 5));
    painter.drawLine(QPointF(-9, -13), QPointF(-9, -8));
    painter.drawLine(QPointF(-11.5, -10.5), QPointF(-6.5, -10.5));
  } else {
    // An open book.
    QPainterPath book(QPointF(0, -8));
    book.cubicTo(-4, -12, -10, -12, -14, -10);
    book.lineTo(-14, 10);
    book.cubicTo(-10, 8, -4, 8, 0, 12);
    book.cubicTo(4, 8, 10, 8, 14, 10);
    book.lineTo(14, -10);
    book.cubicTo(10, -12, 4, -12, 0, -8);
    book.lineTo(0, 12);
    painter.drawPath(book);
    for (const double y : {-5.0, -0.5, 4.0}) {
      painter.drawLine(QPointF(-10.5, y), QPointF(-4, y + 1));
      painter.drawLine(QPointF(10.5, y), QPointF(4, y + 1));
    }
  }
}

}  // namespace orvalis
