#include "ui/controls/live_note.h"

#include <QPainter>

#include "ui/controls/night_style.h"
#include "ui/controls/theme.h"

namespace orvalis {
namespace {

constexpr int kAcross = 8;
constexpr int kDown = 3;
constexpr double kRounding = 4;

}  // namespace

LiveNote::LiveNote(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setWordWrap(true);
  setContentsMargins(kAcross, kDown, kAcross, kDown);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
}

void LiveNote::Show(const QString& text, Colour colour) {
  if (text != this->text()) setText(text);
  if (colour == colour_) return;
  colour_ = colour;
  update();
}

void LiveNote::paintEvent(QPaintEvent* /*event*/) {
  // Drawn here because a style sheet, as at night, would have its own colour for the text.
  const Theme theme = IsNight(this) ? Theme::Night() : Theme::ForDesktop(palette());
  const Tone tone = colour_ == Colour::kWhite ? theme.Stale(Theme::Shape::kCard) : theme.Quiet(colour_);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(tone.fill);
  painter.setPen(tone.outline.isValid() ? QPen(tone.outline, tone.outline_width) : QPen(Qt::NoPen));
  painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), kRounding, kRounding);
  painter.setPen(tone.ink);
  painter.drawText(contentsRect(), Qt::AlignVCenter | Qt::AlignLeft | Qt::TextWordWrap, text());
}

}  // namespace orvalis
