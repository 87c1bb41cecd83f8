#include "ui/panel/word_card.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>

#include "ui/controls/text_fit.h"

namespace orvalis {
namespace {

// In units of the ordinary letters' size.
constexpr double kPadding = 0.5;
constexpr double kSmallText = 0.9;
constexpr double kRadius = 0.45;
constexpr double kSmallestText = 0.52;
constexpr double kStripWord = 1.15;

/// One line of small text, or two where there is room for two; smaller when it is too long, then without what follows a
/// comma, and only then cut.
void DrawSmall(QPainter& painter, const QFont& ordinary, const QRectF& area, int alignment, const QString& text) {
  constexpr double kStep = 0.07;
  constexpr int kSteps = static_cast<int>((kSmallText - kSmallestText) / kStep);
  QFont font;
  for (int step = 0; step <= kSteps; ++step) {
    font = ScaledFont(ordinary, kSmallText - step * kStep);
    const QFontMetricsF metrics(font);
    const bool one_line = metrics.horizontalAdvance(text) <= area.width();
    const QRectF wrapped = metrics.boundingRect(area, alignment | Qt::TextWordWrap, text);
    const bool two_lines = area.height() > 1.9 * metrics.height() && wrapped.width() <= area.width() &&
                           wrapped.height() <= area.height() + 1;
    if (!one_line && !two_lines) continue;
    painter.setFont(font);
    painter.drawText(area, alignment | (one_line ? Qt::TextSingleLine : Qt::TextWordWrap), text);
    return;
  }
  if (text.contains(',')) {
    DrawSmall(painter, ordinary, area, alignment, text.section(',', 0, 0));
    return;
  }
  painter.setFont(font);
  painter.drawText(area, alignment | Qt::TextSingleLine,
                   QFontMetricsF(font).elidedText(text, Qt::ElideRight, area.width()));
}

}  // namespace

WordCard::WordCard(Form form, QString caption, QString longest_word, QWidget* parent)
    : QLabel(parent), form_(form), caption_(std::move(caption)), longest_word_(std::move(longest_word)) {
  setSizePolicy(QSizePolicy::Expanding, form == Form::kStrip ? QSizePolicy::Fixed : QSizePolicy::Expanding);
}

void WordCard::Show(const Content& content) {
  if (content == content_) return;
  content_ = content;
  QString name = caption_ + ": " + content_.word;
  if (!content_.detail.isEmpty()) name += ", " + content_.detail;
  if (content_.tone.stale) name += ", not current";
  setAccessibleName(name);
  setAccessibleDescription(content_.meaning);
  setToolTip(content_.meaning.isEmpty() ? QString() : content_.word + ": " + content_.meaning);
  update();
}

QFont WordCard::WordFont() const {
  QFont word = font();
  word.setBold(true);
  return word;
}

QSize WordCard::SizeForWord(double word_size) const {
  const double size = PixelSize(font());
  QFont word = WordFont();
  word.setPixelSize(static_cast<int>(std::lround(word_size * size)));
  const QFontMetricsF word_metrics(word);
  const QFontMetricsF small(ScaledFont(font(), kSmallText));
  const double word_width = word_metrics.horizontalAdvance(longest_word_);
  double width = word_width;
  double height = word_metrics.height() + size * kPadding;
  if (form_ == Form::kStrip) {
    width += small.horizontalAdvance(caption_) + small.horizontalAdvance("undetermined") + 2 * size * kPadding;
  } else {
    height += (caption_.isEmpty() ? 1 : 2) * small.height() + size * kPadding;
  }
  return QSizeF(width + 2 * size * kPadding, height).toSize();
}

QSize WordCard::sizeHint() const {
  switch (form_) {
    case Form::kHero:
      return SizeForWord(4.2);
    case Form::kTile:
      return SizeForWord(1.7);
    case Form::kStrip:
      return SizeForWord(kStripWord);
  }
  return {};
}

QSize WordCard::minimumSizeHint() const {
  switch (form_) {
    case Form::kHero:
      return {SizeForWord(1.2).width(), SizeForWord(2.0).height()};
    case Form::kTile:
      return {SizeForWord(0.85).width(), SizeForWord(1.2).height()};
    case Form::kStrip: {
      const double size = PixelSize(font());
      return {static_cast<int>(8 * size), SizeForWord(kStripWord).height()};
    }
  }
  return {};
}

void WordCard::paintEvent(QPaintEvent*) {
  const double size = PixelSize(font());
  const Tone& tone = content_.tone;
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  const double inset = std::max(0.5, tone.outline_width / 2);
  const QRectF card = QRectF(rect()).adjusted(inset, inset, -inset, -inset);
  if (tone.fill.isValid()) painter.setBrush(tone.fill);
  if (tone.outline.isValid()) {
    painter.setPen(QPen(tone.outline, tone.outline_width, tone.stale ? Qt::DashLine : Qt::SolidLine));
  } else {
    painter.setPen(Qt::NoPen);
  }
  painter.drawRoundedRect(card, kRadius * size, kRadius * size);

  painter.setPen(tone.ink);
  const double padding = kPadding * size;
  if (form_ == Form::kStrip) {
    PaintStrip(painter, QRectF(rect()).adjusted(padding * 1.5, 0, -padding * 1.5, 0));
  } else {
    const double side = form_ == Form::kTile ? padding * 0.6 : padding;
    PaintStacked(painter, QRectF(rect()).adjusted(side, padding, -side, -padding));
  }
}

void WordCard::PaintStacked(QPainter& painter, QRectF area) const {
  const QFontMetricsF small(ScaledFont(font(), kSmallText));
  const double line = small.height();
  const double caption_height = caption_.isEmpty() || form_ == Form::kHero ? 0 : line;
  // A second line for the detail where there is room to spare, so that the word stays in its place either way; in a
  // small card only when it must be.
  const bool tall = form_ == Form::kHero && area.height() > 5.5 * line;
  const bool long_detail = form_ == Form::kHero && small.horizontalAdvance(content_.detail) > area.width();
  const double detail_height = tall || long_detail ? 2 * line : line;

  const double size = PixelSize(font());
  const double largest = form_ == Form::kHero ? 1000 : 2.6 * size;
  // Fitted to the longest word: another word of the same card must not jump in size.
  const QString& measured = content_.word.size() > longest_word_.size() ? content_.word : longest_word_;
  const QSizeF room(area.width(), area.height() - caption_height - detail_height);
  QFont word_font = FitFont(WordFont(), measured, room, kSmallestText * size, largest);
  word_font.setItalic(content_.tone.stale);
  const double word_height = std::min(room.height(), QFontMetricsF(word_font).height());

  // The three stay together in the middle, however large the card.
  double top = area.top() + (room.height() - word_height) / 2 + (tall ? line / 2 : 0);
  const auto next = [&](double height) {
    const QRectF strip(area.left(), top, area.width(), height);
    top += height;
    return strip;
  };
  if (caption_height > 0) DrawSmall(painter, font(), next(caption_height), Qt::AlignCenter, caption_);
  painter.setFont(word_font);
  painter.drawText(next(word_height), Qt::AlignCenter | Qt::TextSingleLine, content_.word);
  DrawSmall(painter, font(), next(detail_height), Qt::AlignHCenter | Qt::AlignTop, content_.detail);
}

void WordCard::PaintStrip(QPainter& painter, QRectF area) const {
  const double size = PixelSize(font());
  QFont word = FitFont(WordFont(), content_.word, area.size(), kSmallestText * size, kStripWord * size);
  word.setItalic(content_.tone.stale);
  painter.setFont(word);
  const double word_width = QFontMetricsF(word).horizontalAdvance(longest_word_) + size * kPadding;
  const double left_width = (area.width() - word_width) / 2;
  painter.drawText(area, Qt::AlignCenter, content_.word);
  DrawSmall(painter, font(), QRectF(area.left(), area.top(), left_width, area.height()),
            Qt::AlignLeft | Qt::AlignVCenter, caption_);
  DrawSmall(painter, font(), QRectF(area.right() - left_width, area.top(), left_width, area.height()),
            Qt::AlignRight | Qt::AlignVCenter, content_.detail);
}

void WordCard::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) updateGeometry();
  QLabel::changeEvent(event);
}

}  // namespace orvalis
