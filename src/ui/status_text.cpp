#include "ui/status_text.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QTextBlock>
#include <QTextDocument>
#include <algorithm>
#include <cmath>

namespace orvalis {
namespace {

constexpr int kMostLines = 4;
constexpr int kMargin = 2;

}  // namespace

StatusText::StatusText(QWidget* parent) : NightProof(parent) {
  setReadOnly(true);
  setFrameShape(QFrame::NoFrame);
  setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
  setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setTabChangesFocus(true);
  setUndoRedoEnabled(false);
  document()->setDocumentMargin(kMargin);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  setAccessibleName("Status");
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

int StatusText::HeightOf(double text_height) const {
  return static_cast<int>(std::ceil(text_height)) + 2 * kMargin + 2;
}

void StatusText::FitHeight() {
  // As laid out: lines of the document are higher than the font's metrics say.
  double text_height = 0;
  for (QTextBlock block = document()->firstBlock(); block.isValid(); block = block.next()) {
    text_height += blockBoundingRect(block).height();
  }
  // The document of a plain text edit counts its height in lines.
  const double lines = std::max(1.0, document()->size().height());
  const int height = HeightOf(text_height / lines * std::min<double>(lines, kMostLines));
  if (height == maximumHeight() && height == minimumHeight()) return;
  setFixedHeight(height);
}

QSize StatusText::sizeHint() const { return {QFontMetrics(font()).averageCharWidth() * 30, HeightOf(QFontMetricsF(font()).lineSpacing())}; }

QSize StatusText::minimumSizeHint() const { return {QFontMetrics(font()).averageCharWidth() * 10, HeightOf(QFontMetricsF(font()).lineSpacing())}; }

void StatusText::resizeEvent(QResizeEvent* event) {
  NightProof::resizeEvent(event);
  FitHeight();
}

void StatusText::changeEvent(QEvent* event) {
  NightProof::changeEvent(event);
  if (event->type() == QEvent::FontChange) FitHeight();
}

}  // namespace orvalis
