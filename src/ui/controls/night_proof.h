#pragma once

#include <QAbstractScrollArea>
#include <QPaintEvent>
#include <QPainter>
#include <type_traits>

namespace orvalis {

/// A control that needs to know about the night theme. DressWindow calls every one in the window; for a control created
/// later its creator has to do so.
class NightAware {
 public:
  virtual void SetNight(bool night) = 0;

 protected:
  ~NightAware() = default;
};

/// A text control that shows only red at night. Styles and palettes are not enough: the toolkit paints the text cursor
/// by inverting what is below it, and that is black.
template <typename Control>
class NightProof : public Control, public NightAware {
 public:
  using Control::Control;

  void SetNight(bool night) override {
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
