#include "ui/panel/status_text.h"

#include <QFontMetrics>
#include <QResizeEvent>
#include <QTextBlock>
#include <QTextDocument>
#include <QTextLayout>
#include <QTimer>
#include <algorithm>
#include <cmath>

namespace orvalis {
namespace {

constexpr int kMargin = 2;

}  // namespace

StatusText::StatusText(QWidget* parent) : NightProof(parent) {
  setReadOnly(true);
  setFrameShape(QFrame::NoFrame);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setTabChangesFocus(true);
  setUndoRedoEnabled(false);
  document()->setDocumentMargin(kMargin);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAccessibleName(tr("Status"));
  // It is part of the window, not a field to type in.
  setBackgroundRole(QPalette::Window);
  viewport()->setAutoFillBackground(false);
}

void StatusText::Show(const QString& text) {
  if (text == toPlainText()) return;
  setPlainText(text);
  setToolTip(text.toHtmlEscaped());
  setAccessibleDescription(text);
  FitHeight();
}

void StatusText::SetLines(int lines) {
  max_lines_ = lines;
  fixed_ = true;
  FitHeightLater();
}

void StatusText::FitHeight() {
  // As laid out: lines of the document are higher than the font's metrics say.
  const QTextLayout* first = document()->firstBlock().layout();
  const double line = first->lineCount() > 0 ? first->lineAt(0).height() : QFontMetricsF(font()).lineSpacing();
  // The document of a plain text edit counts its height in lines.
  const double lines = std::max(1.0, document()->size().height());
  const bool too_long = lines > max_lines_;
  setVerticalScrollBarPolicy(too_long ? Qt::ScrollBarAlwaysOn : Qt::ScrollBarAlwaysOff);
  const double shown = line * (fixed_ ? max_lines_ : std::min<double>(lines, max_lines_));
  // Without a margin below when more lines follow: their tops would look in.
  const int height = static_cast<int>(std::ceil(shown)) + (too_long && !fixed_ ? kMargin : 2 * kMargin + 2);
  if (height == maximumHeight() && height == minimumHeight()) return;
  setFixedHeight(height);
}

void StatusText::FitHeightLater() {
  // Not from within a change of size: the wrapping that it causes is not known before it is over.
  if (fit_pending_) return;
  fit_pending_ = true;
  QTimer::singleShot(0, this, [this] {
    fit_pending_ = false;
    FitHeight();
  });
}

QSize StatusText::sizeHint() const {
  const QFontMetrics metrics(font());
  return {metrics.averageCharWidth() * 30, metrics.lineSpacing() + 2 * kMargin + 2};
}

QSize StatusText::minimumSizeHint() const {
  return {QFontMetrics(font()).averageCharWidth() * 10, sizeHint().height()};
}

void StatusText::resizeEvent(QResizeEvent* event) {
  NightProof::resizeEvent(event);
  if (event->size().width() != event->oldSize().width()) FitHeightLater();
}

void StatusText::changeEvent(QEvent* event) {
  NightProof::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitHeightLater();
}

}  // namespace orvalis
