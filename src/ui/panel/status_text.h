#pragma once

#include <QPlainTextEdit>
#include <QString>

#include "ui/controls/night_proof.h"

namespace orvalis {

/// A text that says how things are: one line when it is short, a few when it is long, scrolling when even those are too
/// few. It can be selected and copied; the full text is in the tool tip.
class StatusText : public NightProof<QPlainTextEdit> {
  Q_OBJECT
 public:
  explicit StatusText(QWidget* parent);

  /// Does nothing if unchanged, so that a selection is kept.
  void Show(const QString& text);
  /// Always as high as so many lines, so that no text moves what is beside it.
  void SetLines(int lines);

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override;

 protected:
  void resizeEvent(QResizeEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void FitHeight();
  void FitHeightLater();

  int max_lines_ = 4;
  bool fixed_ = false;
  bool fit_pending_ = false;
};

}  // namespace orvalis
