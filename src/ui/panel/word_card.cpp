#include "ui/panel/word_card.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>
#include <algorithm>
#include <cmath>
#include <optional>

#include "ui/controls/text_fit.h"

namespace orvalis {
namespace {

// In units of the ordinary letters' size.
constexpr double kPadding = 0.5;
constexpr double kSmallText = 0.9;
constexpr double kRadius = 0.45;
constexpr double kSmallestText = 0.52;
constexpr double kFirstText = 1.2;       ///< the more important of two texts
constexpr double kSmallestOfTwo = 0.68;  ///< with smaller letters it had better stand alone
constexpr double kStripWord = 1.15;

// In lines of small text: the height of a large card with room to spare for so many lines below its word.
constexpr double kRoomForTwo = 5.5;
constexpr double kRoomForThree = 7.5;

/// How large the letters of a small text may be, in units of the ordinary letters.
struct Sizes {
  double largest;
  double smallest;
};

/// Draws `text` as large as it fits into `area`, on as many lines as it takes. Returns its height, or nothing if it
/// does not fit.
std::optional<double> DrawIfFits(QPainter& painter, const QFont& ordinary, const QRectF& area, int alignment,
                                 const QString& text, Sizes sizes) {
  constexpr double kStep = 0.07;
  const int steps = static_cast<int>((sizes.largest - sizes.smallest) / kStep);
  for (int step = 0; step <= steps; ++step) {
    const QFont font = ScaledFont(ordinary, sizes.largest - step * kStep);
    const QSizeF needed = QFontMetricsF(font).boundingRect(area, alignment | Qt::TextWordWrap, text).size();
    if (needed.width() > area.width() || needed.height() > area.height() + 1) continue;
    painter.setFont(font);
    painter.drawText(area, alignment | Qt::TextWordWrap, text);
    return needed.height();
  }
  return std::nullopt;
}

/// A small text; smaller when it is too long, then without what follows a comma, and only then cut.
void DrawSmall(QPainter& painter, const QFont& ordinary, const QRectF& area, int alignment, const QString& text,
               Sizes sizes = {kSmallText, kSmallestText}) {
  if (DrawIfFits(painter, ordinary, area, alignment, text, sizes)) return;
  const QString start = text.section(',', 0, 0);
  if (start != text && DrawIfFits(painter, ordinary, area, alignment, start, sizes)) return;
  const QFont font = ScaledFont(ordinary, sizes.smallest);
  painter.setFont(font);
  painter.drawText(area, alignment | Qt::TextSingleLine,
                   QFontMetricsF(font).elidedText(start, Qt::ElideRight, area.width()));
}

/// Two texts, of which the first matters more: larger, and alone where there is no room for both.
void DrawDetail(QPainter& painter, const QFont& ordinary, const QRectF& area, const QString& text) {
  constexpr int kAlignment = Qt::AlignHCenter | Qt::AlignTop;
  const QString first = text.section('\n', 0, 0);
  if (first == text) return DrawSmall(painter, ordinary, area, kAlignment, text);
  const double line = QFontMetricsF(ScaledFont(ordinary, kSmallText)).height();
  const auto used =
      DrawIfFits(painter, ordinary, area.adjusted(0, 0, 0, -line), kAlignment, first, {kFirstText, kSmallestOfTwo});
  if (!used) return DrawSmall(painter, ordinary, area, kAlignment, first);
  DrawSmall(painter, ordinary, QRectF(area.left(), area.top() + *used, area.width(), line), kAlignment,
            text.section('\n', 1), {kSmallText, kSmallestOfTwo});
}

}  // namespace

WordCard::WordCard(Form form, QString caption, QString longest_word, QWidget* parent)
    : QLabel(parent), form_(form), caption_(std::move(caption)), longest_word_(std::move(longest_word)) {
  setSizePolicy(QSizePolicy::Expanding, form == Form::kStrip ? QSizePolicy::Fixed : QSizePolicy::Expanding);
}

void WordCard::Show(const Content& content) {
  if (content == content_) return;
  content_ = content;
  QString line = content_.line;
  if (line.isEmpty()) line = content_.detail.isEmpty() ? content_.word : content_.word + ", " + content_.detail;
  setAccessibleName(caption_ + ": " + line + (content_.tone.stale ? tr(", not current") : ""));
  setAccessibleDescription(content_.meaning);
  const QString title = content_.line.isEmpty() ? content_.word + ": " : content_.line + "\n";
  setToolTip(content_.meaning.isEmpty() ? QString() : title + content_.meaning);
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
    width += small.horizontalAdvance(caption_) + small.horizontalAdvance(tr("undetermined")) + 2 * size * kPadding;
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
  // More lines for the detail where there is room to spare, so that the word stays in its place whatever it is; in a
  // small card a second one only when it must be.
  const double spare = form_ == Form::kHero ? area.height() / line : 0;
  const bool tall = spare > kRoomForTwo;
  const bool two = content_.detail.contains('\n');
  const bool long_detail = form_ == Form::kHero && (two || small.horizontalAdvance(content_.detail) > area.width());
  const double detail_height = line * (spare > kRoomForThree ? 3.4 : tall ? 2.4 : long_detail ? 2 : 1);

  const double size = PixelSize(font());
  const double largest = form_ == Form::kHero ? 1000 : 2.6 * size;
  // Fitted to the longest word: another word of the same card must not jump in size.
  const QString& measured = content_.word.size() > longest_word_.size() ? content_.word : longest_word_;
  const QSizeF room(area.width(), area.height() - caption_height - detail_height);
  QFont word_font = FitFont(WordFont(), measured, room, kSmallestText * size, largest);
  word_font.setItalic(content_.tone.stale);
  const double word_height = std::min(room.height(), QFontMetricsF(word_font).height());

  // The three stay together in the middle, however large the card.
  const double lower = (two ? spare > kRoomForThree : tall) ? line / 2 : 0;
  double top = area.top() + (room.height() - word_height) / 2 + lower;
  const auto next = [&](double height) {
    const QRectF strip(area.left(), top, area.width(), height);
    top += height;
    return strip;
  };
  if (caption_height > 0) DrawSmall(painter, font(), next(caption_height), Qt::AlignCenter, caption_);
  painter.setFont(word_font);
  painter.drawText(next(word_height), Qt::AlignCenter | Qt::TextSingleLine, content_.word);
  DrawDetail(painter, font(), next(detail_height - lower), content_.detail);
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
