#include "ui/panel/value_row.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>
#include <cmath>

#include "ui/controls/text_fit.h"

namespace orvalis {
namespace {

// In units of the ordinary letters' size.
constexpr double kGap = 0.45;
constexpr double kLineHeight = 1.75;
constexpr double kSmallestText = 0.7;
constexpr double kArrow = 0.62;  ///< its height

/// The longest number that the rows are laid out for; a longer one is drawn smaller.
const QString& LongestValue() {
  static const QString text = "-188.8";
  return text;
}

}  // namespace

ValueRow::ValueRow(QWidget* parent) : QLabel(parent) { setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred); }

void ValueRow::Show(const Content& content) {
  if (content == content_) return;
  const bool other_label = content.label != content_.label;
  content_ = content;
  Describe();
  if (other_label) updateGeometry();
  update();
}

void ValueRow::ShowTrend(Trend trend) {
  if (trend == trend_) return;
  trend_ = trend;
  Describe();
  update();
}

void ValueRow::Describe() {
  QString name = content_.label + " " + content_.value + " " + content_.unit;
  if (content_.tone.stale) name += tr(", not current");
  QString meaning = content_.meaning;
  if (trend_ != Trend::kNone) {
    const bool rising = trend_ == Trend::kRising;
    name += rising ? tr(", rising") : tr(", falling");
    meaning += rising ? tr(", rising over the last 15 minutes") : tr(", falling over the last 15 minutes");
  }
  setAccessibleName(name);
  setAccessibleDescription(meaning);
  setToolTip(meaning);
}

void ValueRow::SetWidestUnit(const QString& widest) {
  if (widest == widest_unit_) return;
  widest_unit_ = widest;
  updateGeometry();
  update();
}

QFont ValueRow::ValueFont() const {
  QFont value = font();
  value.setBold(!content_.tone.stale);
  value.setItalic(content_.tone.stale);
  return value;
}

double ValueRow::UnitWidth() const { return QFontMetricsF(font()).horizontalAdvance(widest_unit_); }

double ValueRow::ValueWidth() const {
  QFont bold = font();
  bold.setBold(true);  // the column does not move when the values grow old
  return QFontMetricsF(bold).horizontalAdvance(LongestValue()) + 2 * kGap * PixelSize(font());
}

QSize ValueRow::sizeHint() const {
  const double size = PixelSize(font());
  const double label = QFontMetricsF(font()).horizontalAdvance(content_.label);
  return QSizeF(std::ceil(label + ValueWidth() + UnitWidth() + 3 * kGap * size), std::ceil(kLineHeight * size))
      .toSize();
}

QSize ValueRow::minimumSizeHint() const {
  // The label may shrink before the window scrolls sideways.
  const double label = QFontMetricsF(font()).horizontalAdvance(content_.label);
  const QSize wanted = sizeHint();
  return {wanted.width() - static_cast<int>(label * (1 - kSmallestText)), wanted.height()};
}

void ValueRow::paintEvent(QPaintEvent*) {
  const double size = PixelSize(font());
  const double gap = kGap * size;
  const QRectF area = rect();
  const double unit_left = area.right() - UnitWidth() - gap / 2;
  const QRectF cell(unit_left - gap - ValueWidth(), 1.5, ValueWidth(), area.height() - 4);
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);

  if (content_.hairline.isValid()) {
    painter.fillRect(QRectF(0, area.height() - 1, area.width(), 1), content_.hairline);
  }
  const Tone& tone = content_.tone;
  if (tone.fill.isValid()) {
    painter.setBrush(tone.fill);
    painter.setPen(tone.outline.isValid() ? QPen(tone.outline, std::min(tone.outline_width, 2.0)) : QPen(Qt::NoPen));
    painter.drawRoundedRect(cell.adjusted(0.5, 0.5, -0.5, -0.5), gap / 2, gap / 2);
  }

  const QRectF label_area(gap / 2, 0, cell.left() - gap, area.height() - 1);
  painter.setPen(content_.label_ink);
  const QFont label_font =
      FitFont(font(), content_.label, {label_area.width(), area.height() * 2}, kSmallestText * size, size);
  painter.setFont(label_font);
  painter.drawText(label_area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                   QFontMetricsF(label_font).elidedText(content_.label, Qt::ElideRight, label_area.width() + 1));
  painter.setFont(font());
  painter.drawText(QRectF(unit_left, 0, UnitWidth() + gap, area.height() - 1),
                   Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, content_.unit);

  QRectF value_area = cell.adjusted(gap / 2, 0, -gap, 0);
  painter.setPen(tone.ink);
  if (trend_ != Trend::kNone) {
    // Where the longest number would have its sign: the column is not widened for it.
    const double arrow = kArrow * size;
    PaintTrend(painter, {value_area.left(), (area.height() - 1 - arrow) / 2, arrow, arrow});
    value_area.adjust(arrow + gap / 4, 0, 0, 0);
  }
  painter.setFont(FitFont(ValueFont(), content_.value, {value_area.width(), area.height() * 2}, 1, size));
  painter.drawText(QRectF(value_area.left(), 0, value_area.width(), area.height() - 1),
                   Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine, content_.value);
}

void ValueRow::PaintTrend(QPainter& painter, const QRectF& area) const {
  if (trend_ == Trend::kNone) return;
  const bool rising = trend_ == Trend::kRising;
  const double tip = rising ? area.top() : area.bottom();
  const double end = rising ? area.bottom() : area.top();
  const double wing = area.center().y();
  QPen pen = painter.pen();
  pen.setWidthF(std::max(1.5, area.height() * 0.16));
  pen.setCapStyle(Qt::RoundCap);
  pen.setJoinStyle(Qt::RoundJoin);
  painter.setPen(pen);
  const double middle = area.center().x();
  painter.drawLine(QPointF(middle, end), QPointF(middle, tip));
  painter.drawPolyline(QPolygonF{{area.left(), wing}, {middle, tip}, {area.right(), wing}});
  pen.setWidthF(1);
  painter.setPen(pen);
}

void ValueRow::changeEvent(QEvent* event) {
  if (event->type() == QEvent::FontChange) updateGeometry();
  QLabel::changeEvent(event);
}

}  // namespace orvalis
