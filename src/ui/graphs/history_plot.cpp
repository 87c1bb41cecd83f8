#include "ui/graphs/history_plot.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "base/text.h"
#include "history/condition_bands.h"
#include "history/curve.h"
#include "history/history_csv.h"
#include "ui/controls/panel_texts.h"
#include "ui/controls/text_fit.h"
#include "ui/graphs/local_time_ticker.h"

namespace orvalis {
namespace {

constexpr double kMsPerSecond = 1000;
constexpr double kShortestRange = 60;
constexpr double kDefaultRange = 12 * 3600;
constexpr double kRangeWithoutValues = 3600;

QString DateAndTime(const CivilTime& time, const TimeStyle& style, const TimeStyle::Format& time_format) {
  return ToQString(style.date(time) + " " + time_format(time));
}

/// A range of values, or the only value.
QString RangeText(double lowest, double highest) {
  const QString low = ToQString(FormatFixed(lowest, 1));
  const QString high = ToQString(FormatFixed(highest, 1));
  return low == high ? low : low + " to " + high;
}

QString ConditionsText(const Span& span) {
  QString text = span.conditions.Has(Condition::kUnsafe) ? "UNSAFE" : "safe";
  for (const Condition condition :
       {Condition::kClear, Condition::kPartlyCloudy, Condition::kCloudy, Condition::kRain}) {
    if (span.conditions.Has(condition)) text += ", " + ToQString(Name(condition));
  }
  return text;
}

}  // namespace

HistoryPlot::HistoryPlot(const GraphKind& kind, Source source, const QTimeZone& zone, const TimeStyle& style,
                         QWidget* parent)
    : QCustomPlot(parent),
      kind_(kind),
      source_(std::move(source)),
      zone_(zone),
      style_(style),
      theme_(Theme::ForDesktop(QApplication::palette())) {
  setObjectName("plot");
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(kind.title);
  setMinimumSize(280, 180);
  setMouseTracking(true);
  setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
  axisRect()->setRangeDrag(Qt::Horizontal);
  axisRect()->setRangeZoom(Qt::Horizontal);
  setNoAntialiasingOnDrag(true);
  setPlottingHint(QCP::phFastPolylines);
  setAutoAddPlottableToLegend(false);
  legend->setVisible(false);

  addLayer("conditions", layer("background"), limAbove);
  addLayer("readout", layer("overlay"), limAbove);
  layer("readout")->setMode(QCPLayer::lmBuffered);
  conditions_ = new ConditionLayer(axisRect());
  conditions_->setLayer("conditions");
  readout_ = new Readout(axisRect());
  readout_->setLayer("readout");

  xAxis->setTicker(QSharedPointer<LocalTimeTicker>::create(zone_, style_));
  bool right = false;
  for (const CurveKind& curve : kind.curves) {
    right = right || curve.on_right_axis;
    curves_.push_back(
        new CurveGraph(xAxis, curve.on_right_axis ? yAxis2 : yAxis, curve, static_cast<int>(curves_.size())));
  }
  yAxis2->setVisible(right);
  yAxis2->grid()->setVisible(false);

  plotLayout()->insertRow(0);
  title_ = new QCPTextElement(this);
  plotLayout()->addElement(0, 0, title_);
  BuildLegends();
  plotLayout()->setRowSpacing(0);
  plotLayout()->setMargins(QMargins(2, 2, 2, 2));
  plotLayout()->setAutoMargins(QCP::msNone);

  connect(xAxis, qOverload<const QCPRange&>(&QCPAxis::rangeChanged), this, &HistoryPlot::LimitRange);
  SetTheme(theme_);
}

void HistoryPlot::BuildLegends() {
  for (Legend& made : legends_) {
    made.legend = new QCPLegend;
    const int row = plotLayout()->rowCount();
    plotLayout()->addElement(row, 0, made.legend);
    plotLayout()->setRowStretchFactor(row, 0.001);  // as low as it can be
    made.legend->setLayer("legend");
    made.legend->setFillOrder(QCPLegend::foColumnsFirst);
    made.legend->setBorderPen(Qt::NoPen);
    made.legend->setBrush(Qt::NoBrush);
    made.legend->setMargins(QMargins(4, 0, 4, 0));
    made.legend->setColumnSpacing(14);
  }
  auto& [curves, conditions] = legends_;
  for (CurveGraph* curve : curves_) curves.items.push_back(new QCPPlottableLegendItem(curves.legend, curve));
  for (std::size_t i = 0; i < kConditions; ++i) {
    condition_items_.push_back(new ConditionLegendItem(conditions.legend, static_cast<Condition>(i)));
    conditions.items.push_back(condition_items_.back());
  }
  for (const Legend& made : legends_) {
    for (QCPAbstractLegendItem* item : made.items) {
      item->setMargins(QMargins(0, 1, 0, 2));  // or what reaches to the lower edge is cut off
      made.legend->addItem(item);
    }
  }
}

void HistoryPlot::SetTheme(const Theme& theme) {
  theme_ = theme;
  const bool night = theme.kind() == Theme::Kind::kNight;
  const QColor ground =
      night ? QColor(Qt::black) : Mix(theme.window(), theme.kind() == Theme::Kind::kDark ? Qt::black : Qt::white, 0.6);
  const QColor ink = Readable(theme.text(), ground);
  const QColor faint = night ? QColor(70, 0, 0) : Mix(ground, ink, 0.2);
  setBackground(QBrush(theme.window()));
  axisRect()->setBackground(QBrush(ground));
  for (QCPAxis* axis : {xAxis, yAxis, yAxis2}) {
    axis->setBasePen(QPen(ink, 1));
    axis->setTickPen(QPen(ink, 1));
    axis->setSubTickPen(QPen(ink, 1));
    axis->setTickLabelColor(theme.text());
    axis->setLabelColor(theme.text());
    axis->setTickLabelFont(font());
    axis->setLabelFont(font());
    axis->grid()->setPen(QPen(faint, 1, Qt::DotLine));
    axis->grid()->setZeroLinePen(QPen(faint, 1));
  }
  title_->setFont(font());
  title_->setTextColor(theme.text());
  for (CurveGraph* curve : curves_) curve->SetColours(CurveColour(curve->kind(), theme.kind()), ground);
  for (const Legend& shown : legends_) {
    shown.legend->setIconSize(32, QFontMetrics(font()).height());
    for (QCPAbstractLegendItem* item : shown.items) {
      item->setFont(font());
      item->setTextColor(theme.text());
    }
  }
  for (ConditionLegendItem* item : condition_items_) item->SetTheme(theme.kind());
  conditions_->SetTheme(theme.kind());
  readout_->SetColours(ink, ground);
  WrapLegends();
  replot(rpQueuedReplot);
}

void HistoryPlot::SetCentigrade(bool centigrade) {
  if (centigrade == centigrade_) return;
  centigrade_ = centigrade;
  Rebuild();
}

int HistoryPlot::Columns() const { return std::max(100, axisRect()->width()); }

TimeRange HistoryPlot::Shown() const {
  return {.from = static_cast<std::int64_t>(std::floor(xAxis->range().lower * kMsPerSecond)),
          .to = static_cast<std::int64_t>(std::ceil(xAxis->range().upper * kMsPerSecond))};
}

QCPRange HistoryPlot::FullRange() const {
  const double now = static_cast<double>(source_.now()) / kMsPerSecond;
  const std::optional<TimeRange> extent = source_.history().Extent();
  if (!extent) return {now - kRangeWithoutValues, now};
  const double from = static_cast<double>(extent->from) / kMsPerSecond;
  const double to = std::max(now, static_cast<double>(extent->to) / kMsPerSecond);
  return {std::min(from, to - kShortestRange), to};
}

void HistoryPlot::LimitRange(const QCPRange& wanted) {
  if (adjusting_) return;
  SetShown(wanted);
  replot(rpQueuedReplot);
}

void HistoryPlot::SetShown(QCPRange range) {
  const QCPRange all = FullRange();
  const double size = std::clamp(range.size(), kShortestRange, std::max(kShortestRange, all.size()));
  double upper = range.center() + size / 2;
  if (upper - size < all.lower) upper = all.lower + size;
  upper = std::min(upper, all.upper);
  follows_ = upper >= all.upper - size / Columns();
  adjusting_ = true;
  xAxis->setRange(upper - size, upper);
  adjusting_ = false;
  Recalculate();
}

void HistoryPlot::Update() {
  const QCPRange shown = xAxis->range();
  const double moved = FullRange().upper - shown.upper;
  const bool scrolls = follows_ && moved >= shown.size() / Columns();
  if (!scrolls && revision_ == source_.history().revision()) return;
  // One more reading among thousands mostly changes no pixel, and drawing costs more than looking.
  const std::vector<QPoint> before = Pixels();
  SetShown(scrolls ? shown + moved : shown);
  if (scrolls || Pixels() != before) replot(rpQueuedReplot);
}

std::vector<QPoint> HistoryPlot::Pixels() const {
  std::vector<QPoint> pixels;
  const auto add = [&](double x, double y) {
    pixels.emplace_back(static_cast<int>(std::lround(x)), static_cast<int>(std::lround(y)));
  };
  for (const QCPAxis* axis : {yAxis, yAxis2}) add(axis->coordToPixel(0), axis->coordToPixel(1));
  for (const CurveGraph* curve : curves_) {
    for (const QCPGraphData& point : *curve->data()) {
      // Not a number: the curve is interrupted here.
      add(xAxis->coordToPixel(point.key), std::isnan(point.value) ? -1 : curve->valueAxis()->coordToPixel(point.value));
    }
  }
  for (std::size_t i = 0; i < kConditions; ++i) {
    for (const TimeRange& band : conditions_->bands(static_cast<Condition>(i))) {
      add(xAxis->coordToPixel(static_cast<double>(band.from) / kMsPerSecond),
          xAxis->coordToPixel(static_cast<double>(band.to) / kMsPerSecond));
    }
  }
  return pixels;
}

void HistoryPlot::Rebuild() {
  SetShown(follows_ ? xAxis->range() + (FullRange().upper - xAxis->range().upper) : xAxis->range());
  replot(rpQueuedReplot);
}

void HistoryPlot::ShowDefaultRange() {
  const QCPRange all = FullRange();
  SetShown({std::max(all.lower, all.upper - kDefaultRange), all.upper});
  replot(rpQueuedReplot);
}

void HistoryPlot::ShowAll() {
  SetShown(FullRange());
  replot(rpQueuedReplot);
}

void HistoryPlot::Zoom(double factor) {
  const QCPRange shown = xAxis->range();
  // A view of the newest values stays on them.
  const double centre = follows_ ? shown.upper - shown.size() * factor / 2 : shown.center();
  const double half = shown.size() * factor / 2;
  SetShown({centre - half, centre + half});
  replot(rpQueuedReplot);
}

void HistoryPlot::Pan(double share) {
  SetShown(xAxis->range() + share * xAxis->range().size());
  replot(rpQueuedReplot);
}

void HistoryPlot::Recalculate() {
  const History& history = source_.history();
  revision_ = history.revision();
  const TimeRange range = Shown();
  const int columns = Columns();
  for (CurveGraph* curve : curves_) {
    const Quantity quantity = curve->kind().quantity;
    QVector<QCPGraphData> data;
    for (const CurvePoint& point : CurvePoints(history, quantity, range, columns)) {
      data.append({point.time / kMsPerSecond, ShownValue(quantity, point.value, centigrade_)});
    }
    curve->data()->set(data, true);
  }
  for (std::size_t i = 0; i < kConditions; ++i) {
    const auto condition = static_cast<Condition>(i);
    conditions_->SetBands(condition, ConditionBands(history, condition, range, columns));
  }
  FitValueAxis(yAxis);
  if (yAxis2->visible()) FitValueAxis(yAxis2);
  for (CurveGraph* curve : curves_) curve->FitLine();
  constexpr int kTickDistance = 95;
  xAxis->ticker()->setTickCount(std::max(2, columns / kTickDistance));
  ShowTitle();
  ShowReadout();
}

void HistoryPlot::FitValueAxis(QCPAxis* axis) {
  double lowest = std::numeric_limits<double>::infinity();
  double highest = -lowest;
  Quantity quantity = Quantity::kSky;
  for (const CurveGraph* curve : curves_) {
    if (curve->valueAxis() != axis) continue;
    quantity = curve->kind().quantity;
    for (const QCPGraphData& point : *curve->data()) {
      if (std::isnan(point.value) || !xAxis->range().contains(point.key)) continue;
      lowest = std::min(lowest, point.value);
      highest = std::max(highest, point.value);
    }
  }
  const bool temperature = IsTemperature(quantity);
  axis->setLabel((temperature ? "Temperature" : ToQString(quantity == Quantity::kHumidity ? "Humidity" : "Wind")) +
                 " (" + UnitOf(quantity, centigrade_) + ")");
  // Wind and humidity start at zero; temperatures get some room on both sides.
  constexpr double kFullHumidity = 100;
  constexpr double kDefaultWind = 10;
  constexpr double kDefaultTemperatures = 10;
  if (!temperature) {
    const double full_scale = quantity == Quantity::kHumidity ? kFullHumidity : kDefaultWind;
    lowest = std::min(lowest, 0.0);
    highest = std::max(highest, full_scale);
  } else if (lowest > highest) {
    lowest = 0;
    highest = kDefaultTemperatures;
  } else if (highest - lowest < kDefaultTemperatures / 2) {
    const double middle = (highest + lowest) / 2;
    lowest = middle - kDefaultTemperatures / 4;
    highest = middle + kDefaultTemperatures / 4;
  }
  constexpr double kRoom = 0.05;
  const double room = (highest - lowest) * kRoom;
  // Leave room for the strip along the top.
  const double height = std::max(1, axisRect()->height() - ConditionLayer::kStripHeight);
  const double strip = (highest - lowest + 2 * room) * ConditionLayer::kStripHeight / height;
  axis->setRange(lowest < 0 || temperature ? lowest - room : lowest, highest + room + strip);
}

void HistoryPlot::ShowTitle() {
  const CivilTime from = Local(xAxis->range().lower);
  const CivilTime to = Local(xAxis->range().upper);
  const auto& hour_and_minute = style_.hour_and_minute;
  QString title =
      QString(kind_.title) + ", " + DateAndTime(from, style_, hour_and_minute) + " to " +
      (DayNumber(to) == DayNumber(from) ? ToQString(hour_and_minute(to)) : DateAndTime(to, style_, hour_and_minute));
  if (!source_.history().Extent()) title = QString(kind_.title) + ": no values yet";
  if (source_.is_demo()) title += " · DEMO — simulated values";
  title_->setText(title);
}

void HistoryPlot::WrapLegends() {
  for (const Legend& shown : legends_) {
    int widest = 1;
    for (const QCPLayoutElement* item : shown.items) widest = std::max(widest, item->minimumOuterSizeHint().width());
    const int count = static_cast<int>(shown.items.size());
    const int fitting = std::clamp((width() - 20) / (widest + shown.legend->columnSpacing()), 1, count);
    // Rows of about the same length.
    const int rows = (count + fitting - 1) / fitting;
    const int columns = (count + rows - 1) / rows;
    if (shown.legend->wrap() == columns) continue;
    shown.legend->setWrap(columns);
    shown.legend->setFillOrder(QCPLegend::foColumnsFirst, true);
  }
}

void HistoryPlot::resizeEvent(QResizeEvent* event) {
  WrapLegends();
  QCustomPlot::resizeEvent(event);
  if (xAxis->range().size() <= kShortestRange / 2) return;  // not shown yet
  Recalculate();
  replot(rpQueuedReplot);
}

void HistoryPlot::mouseMoveEvent(QMouseEvent* event) {
  QCustomPlot::mouseMoveEvent(event);
  pointer_ = event->position();
  ShowReadout();
  layer("readout")->replot();
}

void HistoryPlot::mouseDoubleClickEvent(QMouseEvent* event) {
  QCustomPlot::mouseDoubleClickEvent(event);
  ShowAll();
}

void HistoryPlot::leaveEvent(QEvent* event) {
  QCustomPlot::leaveEvent(event);
  pointer_.reset();
  ShowReadout();
  layer("readout")->replot();
}

void HistoryPlot::ShowReadout() {
  readout_->Hide();
  if (!pointer_ || !axisRect()->rect().contains(pointer_->toPoint())) return;
  constexpr double kNearPixels = 6;
  const double near = kNearPixels * xAxis->range().size() / Columns() * kMsPerSecond;
  const double time = xAxis->pixelToCoord(pointer_->x()) * kMsPerSecond;
  const std::optional<Span> span = source_.history().Nearest(static_cast<std::int64_t>(time),
                                                             std::max(kLongestStepMs, static_cast<std::int64_t>(near)));
  if (!span) return;
  const double middle = (static_cast<double>(span->first) + static_cast<double>(span->last)) / 2 / kMsPerSecond;
  const double x = xAxis->coordToPixel(middle);
  QString when = DateAndTime(LocalTime(span->first, zone_), style_, style_.time);
  if (span->last != span->first) when += " to " + ToQString(style_.time(LocalTime(span->last, zone_)));
  std::vector<Readout::Row> rows{{when, nullptr, std::nullopt}};
  for (const CurveGraph* curve : curves_) rows.push_back(ReadoutRow(*curve, *span, x));
  rows.push_back({ConditionsText(*span), nullptr, std::nullopt});
  readout_->Show(x, std::move(rows));
}

Readout::Row HistoryPlot::ReadoutRow(const CurveGraph& curve, const Span& span, double x) const {
  const Quantity quantity = curve.kind().quantity;
  const QString name = curve.name() + "  ";
  if (!span.lowest.Knows(quantity)) return {name + "unknown", &curve, std::nullopt};
  const auto shown = [&](const Values& values) {
    // The two decimals that were kept, without what a float adds to them: the panel's rounding would show it.
    constexpr int kDecimals = 2;
    return ShownValue(quantity, RoundToDecimals(values[quantity], kDecimals), centigrade_);
  };
  const double highest = shown(span.highest);
  const QString held = span.held.Has(quantity) ? ", held" : "";
  return {name + RangeText(shown(span.lowest), highest) + " " + UnitOf(quantity, centigrade_) + held, &curve,
          QPointF(x, curve.valueAxis()->coordToPixel(highest))};
}

CivilTime HistoryPlot::Local(double seconds) const {
  return LocalTime(static_cast<std::int64_t>(seconds * kMsPerSecond), zone_);
}

}  // namespace orvalis
