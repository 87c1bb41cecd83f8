#pragma once

#include <QAbstractScrollArea>
#include <QPaintEvent>
#include <QPainter>
#include <type_traits>

namespace orvalis {

/// A text control that shows nothing but red when told so. Styles and palettes do not suffice: the toolkit paints the
/// text cursor by inverting what is below it, and what is below it is black.
template <typename Control>
class NightProof : public Control {
 public:
  using Control::Control;

  void SetNight(bool night) {
    if (night == night_) return;
    night_ = night;
    Canvas()->update();
  }

 protected:
  void paintEvent(QPaintEvent* event) override {
    Control::paintEvent(event);
    if (!night_) return;
    QPainter painter(Canvas());
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.fillRect(event->rect(), Qt::red);
  }

 private:
  [[nodiscard]] QWidget* Canvas() {
    if constexpr (std::is_base_of_v<QAbstractScrollArea, Control>) {
      return this->viewport();
    } else {
      return this;
    }
  }

  bool night_ = false;
};

}  // namespace orvalis
