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
#include "ui/controls/words.h"
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

}  // namespace

HistoryPlot::HistoryPlot(const GraphKind& kind, Source source, const QTimeZone& zone, const TimeStyle& style,
                         QWidget* parent)
    : QCustomPlot(parent),
      kind_(kind),
      source_(std::move(source)),
      history_({.recent = source_.view, .now = source_.now, .changed = [this] { TakePast(); }}, source_.store),
      zone_(zone),
      style_(style),
      theme_(Theme::ForDesktop(QApplication::palette())) {
  setObjectName("plot");
  setFocusPolicy(Qt::StrongFocus);
  setAccessibleName(Words::tr(kind.title));
  QStringList curves;
  for (const CurveKind& curve : kind.curves) curves += Words::tr(curve.name);
  //: Of a graph, to a screen reader; followed by the names of the curves.
  setAccessibleDescription(
      tr("Curves over time: %1. Ctrl with the left or right arrow key reads the values.").arg(curves.join(", ")));
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
  addLayer("limits", layer("main"), limAbove);
  addLayer("readout", layer("overlay"), limAbove);
  layer("readout")->setMode(QCPLayer::lmBuffered);
  conditions_ = new ConditionLayer(axisRect());
  conditions_->setLayer("conditions");
  limit_layer_ = new LimitLayer(axisRect());
  limit_layer_->setLayer("limits");
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
  limit_layer_->SetColours(ink, ground);
  readout_->SetColours(ink, ground);
  WrapLegends();
  replot(rpQueuedReplot);
}

void HistoryPlot::SetUnits(const DisplayUnits& units) {
  if (units == units_) return;
  units_ = units;
  Rebuild();
}

void HistoryPlot::SetLimits(const WordLimits& limits) {
  if (limits == limits_) return;
  limits_ = limits;
  Rebuild();
}

int HistoryPlot::Columns() const { return std::max(100, axisRect()->width()); }

TimeRange HistoryPlot::Shown() const {
  return {.from = static_cast<std::int64_t>(std::floor(xAxis->range().lower * kMsPerSecond)),
          .to = static_cast<std::int64_t>(std::ceil(xAxis->range().upper * kMsPerSecond))};
}

QCPRange HistoryPlot::FullRange() const {
  const double now = static_cast<double>(source_.now()) / kMsPerSecond;
  const double from = now - (source_.view().history.Extent() ? kShortestRange : kRangeWithoutValues);
  const std::optional<TimeRange> all = history_.Extent();
  if (!all) return {from, now};
  return {std::min(from, static_cast<double>(all->from) / kMsPerSecond),
          std::max(now, static_cast<double>(all->to) / kMsPerSecond)};
}

void HistoryPlot::Choose(std::optional<double> seconds) {
  if (seconds == chosen_) return;
  chosen_ = seconds;
  emit ChosenChanged();
}

QCPRange HistoryPlot::WantedRange() const {
  const QCPRange all = FullRange();
  if (chosen_) return {std::max(all.lower, all.upper - *chosen_), all.upper};
  return follows_ ? xAxis->range() + (all.upper - xAxis->range().upper) : xAxis->range();
}

void HistoryPlot::TakePast() {
  if (!history_.failure().empty()) emit Failed(ToQString(history_.failure()));
  Rebuild();
}

void HistoryPlot::LimitRange(const QCPRange& wanted) {
  if (adjusting_) return;
  Choose(std::nullopt);
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
  SetShown(scrolls ? WantedRange() : shown);
  if (scrolls || Pixels() != before) replot(rpQueuedReplot);
}

std::uint64_t HistoryPlot::Revision() const { return history_.revision(); }

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
  for (const LimitLayer::Line& line : limit_layer_->lines()) {
    for (const CurvePoint& point : line.points) {
      add(xAxis->coordToPixel(point.time / kMsPerSecond),
          std::isnan(point.value) ? -1 : line.axis->coordToPixel(point.value));
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
  SetShown(WantedRange());
  replot(rpQueuedReplot);
}

void HistoryPlot::ShowDefaultRange() { ShowLast(kDefaultRange); }

void HistoryPlot::ShowLast(double seconds) {
  history_.Refresh();
  Choose(seconds);
  SetShown(WantedRange());
  replot(rpQueuedReplot);
}

void HistoryPlot::Zoom(double factor) {
  Choose(std::nullopt);
  const QCPRange shown = xAxis->range();
  // A view of the newest values stays on them.
  const double centre = follows_ ? shown.upper - shown.size() * factor / 2 : shown.center();
  const double half = shown.size() * factor / 2;
  SetShown({centre - half, centre + half});
  replot(rpQueuedReplot);
}

void HistoryPlot::Pan(double share) {
  Choose(std::nullopt);
  SetShown(xAxis->range() + share * xAxis->range().size());
  replot(rpQueuedReplot);
}

void HistoryPlot::Recalculate() {
  const TimeRange range = Shown();
  const int columns = Columns();
  const HistoryView view = history_.ViewOf(range, columns);
  revision_ = Revision();
  for (CurveGraph* curve : curves_) {
    const Quantity quantity = curve->kind().quantity;
    QVector<QCPGraphData> data;
    for (const CurvePoint& point : CurvePoints(view.history, quantity, range, columns)) {
      data.append({point.time / kMsPerSecond, ShownValue(quantity, point.value, units_)});
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
  SetLimitLines(view, range, columns);
  FitValueAxis(yAxis);
  if (yAxis2->visible()) FitValueAxis(yAxis2);
  for (CurveGraph* curve : curves_) curve->FitLine();
  constexpr int kTickDistance = 95;
  xAxis->ticker()->setTickCount(std::max(2, columns / kTickDistance));
  ShowTitle();
  ShowReadout();
}

void HistoryPlot::SetLimitLines(const HistoryView& view, TimeRange range, int columns) {
  std::vector<LimitLayer::Line> lines;
  for (const WordLimit& limit : limits_) {
    const Quantity quantity = limit.quantity;
    const auto curve = std::ranges::find(curves_, quantity, [](const CurveGraph* c) { return c->kind().quantity; });
    if (curve == curves_.end()) continue;
    LimitLayer::Line line{.text = QString::fromStdString(WindowLanguage()(limit.text)),
                          .on_right = (*curve)->kind().on_right_axis,
                          .axis = (*curve)->valueAxis(),
                          .points = {}};
    const auto height = [](const WordLimit& of) { return of.under_ambient ? -of.value : of.value; };
    line.text_below = std::ranges::any_of(
        limits_, [&](const WordLimit& other) { return other.quantity == quantity && height(other) > height(limit); });
    if (limit.under_ambient) {
      // Up and down with each day it would cover the curves of a longer time.
      constexpr std::int64_t kLongest = std::int64_t{8} * 24 * History::kHourMs;
      if (range.to - range.from > kLongest) continue;
      // It moves slowly; fewer points are drawn faster.
      constexpr int kCoarser = 8;
      line.points = CurvePoints(view.history, ValueOf(limit), range, columns / kCoarser);
      for (CurvePoint& point : line.points) point.value = ShownValue(quantity, point.value, units_);
    } else {
      const double shown = ShownValue(quantity, limit.value, units_);
      line.text += " " + DecimalText(shown, DecimalsOf(quantity));
      line.points = {{static_cast<double>(range.from), shown}, {static_cast<double>(range.to), shown}};
    }
    lines.push_back(std::move(line));
  }
  limit_layer_->SetLines(std::move(lines));
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
  axis->setLabel(AxisLabel(quantity, units_));
  // Temperatures get some room on both sides.
  constexpr double kDefaultTemperatures = 10;
  const double full_scale = FullScale(quantity, units_);
  const bool temperature = full_scale == 0;
  if (!temperature) {
    lowest = std::min(lowest, 0.0);
    highest = std::max(highest, full_scale);
  }
  // A limit that is far away would press the curves flat.
  constexpr double kNear = 2.5;
  const double near = temperature ? std::numeric_limits<double>::infinity() : highest * kNear;
  const bool values = lowest <= highest;
  for (const LimitLayer::Line& line : limit_layer_->lines()) {
    if (line.axis != axis || !values) continue;
    for (const CurvePoint& point : line.points) {
      if (std::isnan(point.value) || point.value > near) continue;
      lowest = std::min(lowest, point.value);
      highest = std::max(highest, point.value);
    }
  }
  if (lowest > highest) {
    lowest = 0;
    highest = kDefaultTemperatures;
  } else if (temperature && highest - lowest < kDefaultTemperatures / 2) {
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
  const QString what = Words::tr(kind_.title);
  const QString until =
      DayNumber(to) == DayNumber(from) ? ToQString(hour_and_minute(to)) : DateAndTime(to, style_, hour_and_minute);
  //: Above a graph: what it shows, from when to when.
  QString title = tr("%1, %2 to %3").arg(what, DateAndTime(from, style_, hour_and_minute), until);
  const HistoryView view = source_.view();
  //: Above a graph: what it shows.
  if (!view.history.Extent() && !history_.Extent()) title = tr("%1: no values yet").arg(what);
  //: Above a graph, after the title.
  if (view.demo) title = tr("%1 · DEMO — simulated values").arg(title);
  //: Above a graph, after the title: older values are being read from files.
  if (history_.reading()) title = tr("%1 · reading…").arg(title);
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

CivilTime HistoryPlot::Local(double seconds) const {
  return LocalTime(static_cast<std::int64_t>(seconds * kMsPerSecond), zone_);
}

}  // namespace orvalis
