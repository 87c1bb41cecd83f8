#pragma once

#include <QLabel>
#include <QString>

#include "base/colour.h"

namespace orvalis {

/// A remark on a value of now, on the colour of what it means. Wraps its text, and takes the look of its window's
/// theme.
class LiveNote : public QLabel {
  Q_OBJECT
 public:
  explicit LiveNote(QWidget* parent = nullptr);

  /// Repaints only what changed. White is no colour: nothing is known.
  void Show(const QString& text, Colour colour);
  [[nodiscard]] Colour colour() const { return colour_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  Colour colour_ = Colour::kWhite;
};

}  // namespace orvalis
