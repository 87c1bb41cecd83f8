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
QString RangeText(double lowest, double highest, int decimals) {
  const QString low = ToQString(FormatFixed(lowest, decimals));
  const QString high = ToQString(FormatFixed(highest, decimals));
  return low == high ? low : low + " to " + high;
}

/// "safe", "UNSAFE: rain, unit_alarm", or what the unit said of `span` where no verdict was recorded.
QString VerdictText(const VerdictSummary& verdict, const std::optional<Span>& span) {
  if (!verdict.unsafe && !verdict.safe) {
    const bool unit_unsafe = span && span->conditions.Has(Condition::kUnsafe);
    return unit_unsafe ? "UNSAFE by the unit, verdict not recorded" : "verdict not recorded";
  }
  if (!verdict.unsafe) return "safe";
  QStringList reasons;
  for (const std::string& reason : verdict.reasons) reasons += ToQString(reason);
  return (verdict.safe ? "UNSAFE at times: " : "UNSAFE: ") + reasons.join(", ");
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
  for (std::size_t i = 0; i < kBands; ++i) {
    condition_items_.push_back(new ConditionLegendItem(conditions.legend, static_cast<Band>(i)));
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
  const HistoryView view = source_.view();
  const std::optional<TimeRange> values = view.history.Extent();
  // Without a unit there is a verdict all the same. Demo values are of this run alone.
  const std::optional<TimeRange> verdicts = view.demo ? std::nullopt : view.verdicts.Extent();
  double from = now - (values ? kShortestRange : kRangeWithoutValues);
  double to = now;
  for (const std::optional<TimeRange>& extent : {values, verdicts}) {
    if (!extent) continue;
    from = std::min(from, static_cast<double>(extent->from) / kMsPerSecond);
    to = std::max(to, static_cast<double>(extent->to) / kMsPerSecond);
  }
  return {from, to};
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
  if (!scrolls && revision_ == Revision()) return;
  // One more reading among thousands mostly changes no pixel, and drawing costs more than looking.
  const std::vector<QPoint> before = Pixels();
  SetShown(scrolls ? shown + moved : shown);
  if (scrolls || Pixels() != before) replot(rpQueuedReplot);
}

std::uint64_t HistoryPlot::Revision() const {
  const HistoryView view = source_.view();
  return view.history.revision() + view.verdicts.revision();
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
  for (std::size_t i = 0; i < kBands; ++i) {
    for (const TimeRange& band : conditions_->places(static_cast<Band>(i))) {
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
  const HistoryView view = source_.view();
  revision_ = Revision();
  const TimeRange range = Shown();
  const int columns = Columns();
  for (CurveGraph* curve : curves_) {
    const Quantity quantity = curve->kind().quantity;
    QVector<QCPGraphData> data;
    for (const CurvePoint& point : CurvePoints(view.history, quantity, range, columns)) {
      data.append({point.time / kMsPerSecond, ShownValue(quantity, point.value, centigrade_)});
    }
    curve->data()->set(data, true);
  }
  for (std::size_t i = 0; i < kWeatherBands; ++i) {
    conditions_->SetBands(static_cast<Band>(i),
                          ConditionBands(view.history, static_cast<Condition>(i), range, columns));
  }
  VerdictBands verdict = BandsOf(view, range, columns);
  conditions_->SetBands(Band::kSafe, std::move(verdict.safe));
  conditions_->SetBands(Band::kUnsafe, std::move(verdict.unsafe));
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
  axis->setLabel(AxisLabel(quantity, centigrade_));
  // Temperatures get some room on both sides.
  constexpr double kDefaultTemperatures = 10;
  const double full_scale = FullScale(quantity);
  const bool temperature = full_scale == 0;
  if (!temperature) {
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
  const double height = std::max(1, axisRect()->height() - kStripHeight);
  const double strip = (highest - lowest + 2 * room) * kStripHeight / height;
  axis->setRange(lowest < 0 || temperature ? lowest - room : lowest, highest + room + strip);
}

void HistoryPlot::ShowTitle() {
  const CivilTime from = Local(xAxis->range().lower);
  const CivilTime to = Local(xAxis->range().upper);
  const auto& hour_and_minute = style_.hour_and_minute;
  QString title =
      QString(kind_.title) + ", " + DateAndTime(from, style_, hour_and_minute) + " to " +
      (DayNumber(to) == DayNumber(from) ? ToQString(hour_and_minute(to)) : DateAndTime(to, style_, hour_and_minute));
  const HistoryView view = source_.view();
  if (!view.history.Extent()) title = QString(kind_.title) + ": no values yet";
  if (view.demo) title += " · DEMO — simulated values";
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
  const HistoryView view = source_.view();
  constexpr double kNearPixels = 6;
  const double pixel = xAxis->range().size() / Columns() * kMsPerSecond;
  const auto time = static_cast<std::int64_t>(xAxis->pixelToCoord(pointer_->x()) * kMsPerSecond);
  const std::optional<Span> near =
      view.history.Nearest(time, std::max(kLongestStepMs, static_cast<std::int64_t>(kNearPixels * pixel)));
  const TimeRange shown = near ? TimeRange{near->first, near->last} : TimeRange{time, time};
  // What the strip shows at this place, too short as it may be for a picture of days.
  const std::int64_t middle = shown.from + (shown.to - shown.from) / 2;
  const auto beside = static_cast<std::int64_t>(pixel);
  const VerdictSummary verdict =
      VerdictDuring(view, {.from = std::min(shown.from, middle - beside), .to = std::max(shown.to, middle + beside)});
  if (!near && verdict.Word().empty()) return;

  QString when = DateAndTime(LocalTime(shown.from, zone_), style_, style_.time);
  if (shown.to != shown.from) when += " to " + ToQString(style_.time(LocalTime(shown.to, zone_)));
  std::vector<Readout::Row> rows{{when, nullptr, std::nullopt}, {VerdictText(verdict, near), nullptr, std::nullopt}};
  const double x = xAxis->coordToPixel(static_cast<double>(middle) / kMsPerSecond);
  if (near) AddValues(*near, x, rows);
  readout_->Show(x, std::move(rows));
}

void HistoryPlot::AddValues(const Span& span, double x, std::vector<Readout::Row>& rows) const {
  for (const CurveGraph* curve : curves_) rows.push_back(ReadoutRow(*curve, span, x));
  QStringList conditions;
  for (std::size_t i = 0; i < kWeatherBands; ++i) {
    if (span.conditions.Has(static_cast<Condition>(i))) conditions += NameOf(static_cast<Band>(i));
  }
  if (!conditions.isEmpty()) rows.push_back({conditions.join(", "), nullptr, std::nullopt});
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
  return {name + RangeText(shown(span.lowest), highest, DecimalsOf(quantity)) + " " + UnitOf(quantity, centigrade_) + held, &curve,
          QPointF(x, curve.valueAxis()->coordToPixel(highest))};
}

CivilTime HistoryPlot::Local(double seconds) const {
  return LocalTime(static_cast<std::int64_t>(seconds * kMsPerSecond), zone_);
}

}  // namespace orvalis
