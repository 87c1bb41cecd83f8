// What a HistoryPlot shows at the pointer.

#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "history/history_csv.h"
#include "ui/controls/panel_texts.h"
#include "ui/controls/words.h"
#include "ui/graphs/history_plot.h"
#include "ui/graphs/local_time_ticker.h"
#include "verdict/reason.h"
#include "verdict/told_reasons.h"

namespace orvalis {
namespace {

constexpr double kMsPerSecond = 1000;

/// A range of values, or the only value.
QString RangeText(double lowest, double highest, int decimals) {
  const QString low = DecimalText(lowest, decimals);
  const QString high = DecimalText(highest, decimals);
  //: A range of values or of times.
  return low == high ? low : Words::tr("%1 to %2").arg(low, high);
}

/// "safe", "UNSAFE: unit alarm, rain", or what the unit said of `span` where no verdict was recorded.
QString VerdictText(const VerdictSummary& verdict, const std::optional<Span>& span) {
  if (!verdict.unsafe && !verdict.safe) {
    const bool unit_unsafe = span && span->conditions.Has(Condition::kUnsafe);
    return unit_unsafe ? Words::tr("UNSAFE by the unit, verdict not recorded") : Words::tr("verdict not recorded");
  }
  if (!verdict.unsafe) return NameOf(Band::kSafe);
  QStringList reasons;
  for (const std::string& reason : verdict.reasons) reasons += Translated(ReasonInWords(reason));
  //: Followed by the reasons.
  const QString text = verdict.safe ? Words::tr("UNSAFE at times: %1") : Words::tr("UNSAFE: %1");
  return text.arg(reasons.join(", "));
}

/// `text` in lines no longer than `letters`, a new one for each sentence; what is too much is left out.
QStringList Lines(const QString& text, qsizetype letters) {
  constexpr qsizetype kMost = 5;
  QStringList lines;
  for (const QString& sentence : text.split(". ", Qt::SkipEmptyParts)) {
    QString line;
    for (const QString& word : sentence.split(' ')) {
      if (!line.isEmpty() && line.size() + 1 + word.size() > letters) {
        lines += line;
        line.clear();
      }
      line += (line.isEmpty() ? "" : " ") + word;
    }
    lines += line;
  }
  if (lines.size() <= kMost) return lines;
  lines = lines.first(kMost);
  lines.back() += " …";
  return lines;
}

}  // namespace

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
  HideReadout();
}

void HistoryPlot::HideReadout() {
  pointer_.reset();
  ShowReadout();
  layer("readout")->replot();
}

void HistoryPlot::MoveReadout(int steps) {
  constexpr double kSteps = 100;
  const QRect area = axisRect()->rect();
  const double from = pointer_ ? pointer_->x() : area.right() + area.width() / kSteps;
  const double x = std::clamp<double>(from + steps * area.width() / kSteps, area.left(), area.right());
  pointer_ = QPointF(x, area.center().y());
  ShowReadout();
  if (!readout_->shown()) {
    // Without a pointer nothing else tells where one is.
    const auto time = static_cast<std::int64_t>(xAxis->pixelToCoord(x) * kMsPerSecond);
    readout_->Show(x,
                   {{TimesText({time, time}), nullptr, std::nullopt}, {tr("nothing is known"), nullptr, std::nullopt}});
  }
  layer("readout")->replot();
  QStringList texts;
  for (const Readout::Row& row : readout_->rows()) texts += row.text;
  setAccessibleDescription(texts.join("; "));
}

void HistoryPlot::ShowReadout() {
  readout_->Hide();
  if (!pointer_ || !axisRect()->rect().contains(pointer_->toPoint())) return;
  const HistoryView view = View();
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

  std::vector<Readout::Row> rows{{TimesText(shown), nullptr, std::nullopt},
                                 {VerdictText(verdict, near), nullptr, std::nullopt}};
  constexpr double kWidth = 0.6;
  const double letter = QFontMetricsF(font()).averageCharWidth();
  const auto letters = std::max<qsizetype>(24, static_cast<qsizetype>(axisRect()->width() * kWidth / letter));
  for (const QString& line : Lines(Translated(ToldReasons(verdict.explanation)), letters)) {
    rows.push_back({line, nullptr, std::nullopt});
  }
  const double x = xAxis->coordToPixel(static_cast<double>(middle) / kMsPerSecond);
  if (near) AddValues(*near, x, rows);
  readout_->Show(x, std::move(rows));
}

QString HistoryPlot::TimesText(TimeRange times) const {
  const CivilTime from = LocalTime(times.from, zone_);
  const CivilTime to = LocalTime(times.to, zone_);
  QString text = ToQString(style_.date(from) + " " + style_.time(from));
  if (times.from == times.to) return text;
  const std::string end = (DayNumber(from) == DayNumber(to) ? "" : style_.date(to) + " ") + style_.time(to);
  return Words::tr("%1 to %2").arg(text, ToQString(end));
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
  //: In place of a value.
  if (!span.lowest.Knows(quantity)) return {name + tr("unknown"), &curve, std::nullopt};
  const auto shown = [&](const Values& values) {
    // The two decimals that were kept, without what a float adds to them: the panel's rounding would show it.
    constexpr int kDecimals = 2;
    return ShownValue(quantity, RoundToDecimals(values[quantity], kDecimals), units_);
  };
  const double highest = shown(span.highest);
  QString value = RangeText(shown(span.lowest), highest, DecimalsOf(quantity)) + " " + UnitOf(quantity, units_);
  //: %1 is a value with its unit, which was kept from before because there was no new one.
  if (span.held.Has(quantity)) value = tr("%1, held").arg(value);
  return {name + value, &curve, QPointF(x, curve.valueAxis()->coordToPixel(highest))};
}

}  // namespace orvalis
