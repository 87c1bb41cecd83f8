#include "ui/controls/logo_button.h"

#include <QPainter>
#include <QPainterPath>
#include <QUrl>

#include "ui/controls/web_page.h"
#include "ui/controls/words.h"

namespace orvalis {

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

std::vector<LogoButton*> MakeLogoButtons(QWidget* parent) {
  struct Logo {
    LogoButton::Picture picture;
    const char* name;
    QString tip;
    QUrl (*page)();
  };
  std::vector<LogoButton*> buttons;
  for (const Logo& logo :
       {Logo{LogoButton::Picture::kStandards, "picStandards", Words::tr("Standards web site"), StandardsPage},
        Logo{LogoButton::Picture::kGuide, "picGuide", Words::tr("User guide"), DocumentationPage}}) {
    auto* button = new LogoButton(logo.picture, parent);
    button->setObjectName(logo.name);
    button->setToolTip(logo.tip);
    button->setAccessibleName(logo.tip);
    QObject::connect(button, &QAbstractButton::clicked, button,
                     [button, logo] { OpenWebPage(logo.page(), button->window()); });
    buttons.push_back(button);
  }
  return buttons;
}

}  // namespace orvalis
