#pragma once

#include <QAbstractButton>
#include <vector>

namespace orvalis {

/// A picture that leads to a web page.
class LogoButton : public QAbstractButton {
 public:
  enum class Picture { kStandards, kGuide };
  explicit LogoButton(Picture picture, QWidget* parent = nullptr);
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Picture picture_;
};

/// The pictures that a window has, in their order. They belong to `parent`; what keeps a page from being shown is said
/// over its window.
[[nodiscard]] std::vector<LogoButton*> MakeLogoButtons(QWidget* parent);

}  // namespace orvalis
