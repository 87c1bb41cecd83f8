#pragma once

#include <QPushButton>
#include <QString>

#include "ui/controls/theme.h"

namespace orvalis {

/// The connect button: a toggle that shows its content and never flips on its own. A long caption is wrapped;
/// the height is that of the longest one.
class ConnectButton : public QPushButton {
  Q_OBJECT
 public:
  struct Content {
    QString caption;
    bool on = false;
    bool enabled = true;
    Tone tone;

    bool operator==(const Content&) const = default;
  };

  explicit ConnectButton(QWidget* parent);

  /// Repaints only when `content` has changed.
  void Show(const Content& content);
  [[nodiscard]] const Content& content() const { return content_; }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;
  [[nodiscard]] bool hasHeightForWidth() const override { return true; }
  [[nodiscard]] int heightForWidth(int width) const override;

 protected:
  void nextCheckState() override {}  // the program decides what a click does, and shows the result
  void paintEvent(QPaintEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  [[nodiscard]] double LeftOfText() const;
  [[nodiscard]] QRectF TextArea() const;

  Content content_;
};

}  // namespace orvalis
