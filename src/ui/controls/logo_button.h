#pragma once

#include <QAbstractButton>
#include <vector>

namespace orvalis {

/// A picture that opens a web page.
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

/// The logos of a window, in order. They belong to `parent`; a page that cannot be opened is reported over its window.
[[nodiscard]] std::vector<LogoButton*> MakeLogoButtons(QWidget* parent);

}  // namespace orvalis
