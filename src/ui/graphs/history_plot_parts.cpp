#include "ui/graphs/history_plot_parts.h"

#include <algorithm>
#include <cmath>

#include "ui/controls/panel_texts.h"
#include "ui/controls/words.h"

namespace orvalis {
namespace {

constexpr double kMarkerSize = 8;
constexpr double kMarkerDistance = 110;
constexpr double kLineWidth = 1.6;
constexpr double kMillisecondsPerSecond = 1000;

}  // namespace

CurveGraph::CurveGraph(QCPAxis* time_axis, QCPAxis* value_axis, const CurveKind& kind, int place)
    : QCPGraph(time_axis, value_axis), kind_(kind), place_(place) {
  setName(Words::tr(kind.name));
  setObjectName(kind.name);
  setSelectable(QCP::stNone);
  setAdaptiveSampling(false);  // the points are already thinned, with the gaps kept
}

void CurveGraph::SetColours(const QColor& line, const QColor& ground) {
  setPen(QPen(line, kLineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
  marker_ = QCPScatterStyle(kind_.marker, QPen(line, 1), ground, kMarkerSize);
}

void CurveGraph::FitLine() {
  const double per_unit = valueAxis()->axisRect()->height() / std::max(1e-9, valueAxis()->range().size());
  double length = 0;
  for (auto point = mDataContainer->constBegin(); point != mDataContainer->constEnd(); ++point) {
    if (point == mDataContainer->constBegin()) continue;
    const double rise = std::abs(point->value - std::prev(point)->value) * per_unit;
    if (!std::isnan(rise)) length += rise;
  }
  constexpr double kDense = 8;  // widths of the picture
  const bool dense = length > kDense * keyAxis()->axisRect()->width();
  setAntialiased(!dense);
  QPen line = pen();
  line.setWidthF(dense ? 1 : kLineWidth);
  setPen(line);
}

void CurveGraph::DrawMarker(QCPPainter* painter, QPointF place) const {
  marker_.applyTo(painter, pen());
  marker_.drawShape(painter, place);
}

void CurveGraph::draw(QCPPainter* painter) {
  QCPGraph::draw(painter);
  painter->setAntialiasing(true);
  const QCPAxis* time = keyAxis();
  const QCPAxis* value = valueAxis();
  const QCPRange pixels(time->coordToPixel(time->range().lower), time->coordToPixel(time->range().upper));
  const double first = pixels.lower + kMarkerDistance * (0.5 + place_) / 4;
  const int count = static_cast<int>((pixels.upper - first) / kMarkerDistance) + 1;
  for (int i = 0; i < count; ++i) {
    const double x = first + i * kMarkerDistance;
    const double wanted = time->pixelToCoord(x);
    const auto after = mDataContainer->findBegin(wanted, false);
    if (after == mDataContainer->constBegin() || after == mDataContainer->constEnd()) continue;
    const auto before = std::prev(after);
    if (std::isnan(before->value) || std::isnan(after->value)) continue;
    const double share = after->key > before->key ? (wanted - before->key) / (after->key - before->key) : 0;
    const double y = value->coordToPixel(before->value + share * (after->value - before->value));
    DrawMarker(painter, QPointF(x, y));
  }
}

void CurveGraph::drawLegendIcon(QCPPainter* painter, const QRectF& rect) const {
  painter->setPen(pen());
  painter->setAntialiasing(true);
  painter->drawLine(QLineF(rect.left(), rect.center().y(), rect.right(), rect.center().y()));
  DrawMarker(painter, rect.center());
}

ConditionLayer::ConditionLayer(QCPAxisRect* rect) : QCPLayerable(rect->parentPlot(), "conditions", rect), rect_(rect) {}

void ConditionLayer::Paint(QCPPainter* painter, const QRectF& rect, const BandLook& look) {
  if (look.ground.isValid()) painter->fillRect(rect, look.ground);
  if (look.brush.style() != Qt::NoBrush) painter->fillRect(rect, look.brush);
}

void ConditionLayer::draw(QCPPainter* painter) {
  const QCPAxis* axis = rect_->axis(QCPAxis::atBottom);
  const QRectF area = rect_->rect();
  QFont font = painter->font();
  font.setPixelSize(kStripHeight - 4);
  font.setBold(true);
  painter->setFont(font);
  for (std::size_t i = 0; i < kBands; ++i) {
    const BandLook look = LookOf(static_cast<Band>(i), theme_);
    const QString word = NameOf(static_cast<Band>(i)).toUpper();
    const double word_width = QFontMetricsF(font).horizontalAdvance(word);
    for (const TimeRange& band : places_[i]) {
      const double from = std::floor(axis->coordToPixel(static_cast<double>(band.from) / kMillisecondsPerSecond));
      const double to = std::ceil(axis->coordToPixel(static_cast<double>(band.to) / kMillisecondsPerSecond));
      // However short, it is visible.
      const QRectF place(from, area.top(), std::max(to - from, look.word ? 2.0 : 1.0), area.height());
      Paint(painter, place, look);
      const QRectF strip(place.left(), place.top(), place.width(), look.strip);
      painter->fillRect(strip, look.outline);
      if (!look.word) continue;
      painter->setPen(QPen(look.outline, 1, Qt::DotLine));
      painter->drawLine(place.topLeft(), place.bottomLeft());
      painter->drawLine(place.topRight(), place.bottomRight());
      if (strip.width() < word_width + 8) continue;
      painter->setPen(look.ink);
      painter->drawText(strip, Qt::AlignCenter, word);
    }
  }
}

LimitLayer::LimitLayer(QCPAxisRect* rect) : QCPLayerable(rect->parentPlot(), "limits", rect), rect_(rect) {}

void LimitLayer::draw(QCPPainter* painter) {
  const QCPAxis* time = rect_->axis(QCPAxis::atBottom);
  const QRectF area = rect_->rect();
  for (const Line& line : lines_) {
    QPen pen(ink_, 1);
    pen.setDashPattern({7, 4});
    painter->setPen(pen);
    std::optional<QPointF> begin;
    QPolygonF piece;
    const auto end_piece = [&] {
      painter->drawPolyline(piece);
      piece.clear();
    };
    for (const CurvePoint& point : line.points) {
      if (std::isnan(point.value)) {
        end_piece();
        continue;
      }
      const double x = std::clamp(time->coordToPixel(point.time / kMillisecondsPerSecond), area.left(), area.right());
      piece.append(QPointF(x, line.axis->coordToPixel(point.value)));
      if (!begin || line.on_right) begin = piece.back();
    }
    end_piece();
    if (begin && area.contains(*begin)) DrawText(painter, line, *begin);
  }
}

void LimitLayer::DrawText(QCPPainter* painter, const Line& line, QPointF begin) const {
  constexpr double kAway = 3;
  QFont font = painter->font();
  font.setPixelSize(std::max(9, static_cast<int>(QFontInfo(mParentPlot->font()).pixelSize() * 0.85)));
  painter->setFont(font);
  const QFontMetricsF metrics(font);
  const QSizeF size(metrics.horizontalAdvance(line.text) + 2 * kAway, metrics.height());
  const double left = line.on_right ? begin.x() - size.width() - kAway : begin.x() + kAway;
  const double top = line.text_below ? begin.y() + 1 : begin.y() - size.height();
  const QRectF box(QPointF(left, top), size);
  QColor ground = ground_;
  ground.setAlpha(200);
  painter->fillRect(box, ground);
  painter->setPen(ink_);
  painter->drawText(box, Qt::AlignCenter, line.text);
}

ConditionLegendItem::ConditionLegendItem(QCPLegend* parent, Band band)
    : QCPAbstractLegendItem(parent), band_(band), text_(NameOf(band)) {
  setAntialiased(false);
}

QSize ConditionLegendItem::TextSize() const { return QFontMetrics(mFont).size(Qt::TextSingleLine, text_); }

QSize ConditionLegendItem::minimumOuterSizeHint() const {
  const QSize icon = mParentLegend->iconSize();
  return {icon.width() + mParentLegend->iconTextPadding() + TextSize().width() + mMargins.left() + mMargins.right(),
          std::max(TextSize().height(), icon.height()) + mMargins.top() + mMargins.bottom()};
}

void ConditionLegendItem::draw(QCPPainter* painter) {
  const BandLook look = LookOf(band_, theme_);
  const QRectF icon(QPointF(mRect.topLeft()), QSizeF(mParentLegend->iconSize()));
  ConditionLayer::Paint(painter, icon, look);
  painter->fillRect(QRectF(icon.topLeft(), QSizeF(icon.width(), icon.height() * look.strip / kStripHeight / 2)),
                    look.outline);
  painter->setPen(look.outline);
  painter->setBrush(Qt::NoBrush);
  painter->drawRect(icon.adjusted(0, 0, -1, -1));
  painter->setFont(mFont);
  painter->setPen(mTextColor);
  // Where the legend's other items have theirs.
  painter->drawText(QRectF(icon.right() + mParentLegend->iconTextPadding(), mRect.top(), TextSize().width() + 2,
                           std::max<double>(TextSize().height(), icon.height())),
                    Qt::TextDontClip, text_);
}

Readout::Readout(QCPAxisRect* rect) : QCPLayerable(rect->parentPlot(), "readout", rect), rect_(rect) {}

void Readout::draw(QCPPainter* painter) {
  if (rows_.empty()) return;
  const QRectF area = rect_->rect();
  painter->setPen(QPen(ink_, 1, Qt::DashLine));
  painter->drawLine(QLineF(x_, area.top(), x_, area.bottom()));
  const QFontMetricsF metrics(painter->font());
  QSizeF size;
  for (const Row& row : rows_) {
    if (row.dot) {
      constexpr double kDotRadius = 3.5;
      painter->setPen(QPen(ground_, 1));
      painter->setBrush(row.curve->pen().color());
      painter->drawEllipse(*row.dot, kDotRadius, kDotRadius);
    }
    size = QSizeF(std::max(size.width(), metrics.horizontalAdvance(row.text)), size.height() + metrics.lineSpacing());
  }
  constexpr double kPadding = 6;
  constexpr double kAway = 10;
  const double indent = 2 * kPadding + kMarkerSize;
  size += QSizeF(indent + kPadding, 2 * kPadding);
  const bool fits_right = x_ + kAway + size.width() <= area.right();
  const double left = fits_right ? x_ + kAway : std::max(area.left(), x_ - kAway - size.width());
  const QRectF box(QPointF(left, area.top() + kStripHeight + 4), size);
  painter->setPen(QPen(ink_, 1));
  painter->setBrush(ground_);
  painter->drawRoundedRect(box, 4, 4);
  double top = box.top() + kPadding;
  for (const Row& row : rows_) {
    if (row.curve != nullptr) {
      row.curve->DrawMarker(painter, QPointF(box.left() + kPadding + kMarkerSize / 2, top + metrics.lineSpacing() / 2));
    }
    painter->setPen(ink_);
    painter->drawText(QRectF(box.left() + indent, top, size.width(), metrics.lineSpacing()), Qt::AlignLeft, row.text);
    top += metrics.lineSpacing();
  }
}

}  // namespace orvalis
