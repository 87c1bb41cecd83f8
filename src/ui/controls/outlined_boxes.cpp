#include "ui/controls/outlined_boxes.h"

#include <QApplication>
#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>

namespace orvalis {
namespace {

constexpr const char* kQtsOwn = "fusion";

class OutlinedBoxes : public QProxyStyle {
 public:
  OutlinedBoxes() : QProxyStyle(kQtsOwn) {}

  void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter,
                     const QWidget* widget) const override {
    QProxyStyle::drawPrimitive(element, option, painter, widget);
    const bool is_option = element == PE_IndicatorRadioButton;
    const QColor text = option->palette.windowText().color();
    const bool is_dark = option->palette.window().color().lightness() < text.lightness();
    if (!is_dark || !(is_option || element == PE_IndicatorCheckBox)) return;
    QColor line = text;
    line.setAlphaF(option->state.testFlag(State_Enabled) ? 0.6F : 0.3F);
    const QRectF box = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
    painter->save();
    painter->setPen(line);
    painter->setBrush(Qt::NoBrush);
    painter->setRenderHint(QPainter::Antialiasing, is_option);
    is_option ? painter->drawEllipse(box) : painter->drawRect(box);
    painter->restore();
  }
};

}  // namespace

void OutlineBoxes() {
  if (QApplication::style()->name() == kQtsOwn) QApplication::setStyle(new OutlinedBoxes);
}

}  // namespace orvalis
