#include "ui/graphs/local_time_ticker.h"

#include <QDateTime>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdlib>
#include <optional>

#include "ui/controls/panel_texts.h"

namespace orvalis {
namespace {

constexpr double kMinute = 60;
constexpr double kHour = 3600;
constexpr double kDay = 24 * kHour;
constexpr double kMonth = 30 * kDay;
constexpr std::int64_t kMsPerSecond = 1000;

struct Step {
  double seconds;
  int parts;       ///< into which the sub ticks divide it
  int months = 0;  ///< so many whole months, of about as many seconds
};
constexpr std::array kSteps{Step{1, 1},
                            Step{2, 2},
                            Step{5, 5},
                            Step{10, 5},
                            Step{15, 3},
                            Step{30, 3},
                            Step{kMinute, 4},
                            Step{2 * kMinute, 2},
                            Step{5 * kMinute, 5},
                            Step{10 * kMinute, 5},
                            Step{15 * kMinute, 3},
                            Step{30 * kMinute, 3},
                            Step{kHour, 4},
                            Step{2 * kHour, 2},
                            Step{3 * kHour, 3},
                            Step{6 * kHour, 6},
                            Step{12 * kHour, 4},
                            Step{kDay, 4},
                            Step{2 * kDay, 2},
                            Step{7 * kDay, 7},
                            Step{14 * kDay, 2},
                            Step{kMonth, 1, 1},
                            Step{2 * kMonth, 1, 2},
                            Step{3 * kMonth, 1, 3}};
/// 1970-01-01 was a Thursday; weeks begin on Mondays.
constexpr double kFirstMonday = 4 * kDay;

const Step& StepOf(double seconds) {
  return *std::find_if(kSteps.begin(), kSteps.end() - 1, [&](const Step& s) { return s.seconds >= seconds; });
}

}  // namespace

CivilTime LocalTime(std::int64_t milliseconds, const QTimeZone& zone) {
  return TimeAt(milliseconds, zone.offsetFromUtc(QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC)) / 60);
}

int LocalTimeTicker::Offset(double time) const {
  return zone_.offsetFromUtc(QDateTime::fromSecsSinceEpoch(static_cast<qint64>(std::floor(time)), Qt::UTC));
}

double LocalTimeTicker::getTickStep(const QCPRange& range) {
  step_ = StepOf(range.size() / mTickCount).seconds;
  return step_;
}

int LocalTimeTicker::getSubTickCount(double tick_step) { return StepOf(tick_step).parts - 1; }

QVector<double> LocalTimeTicker::MonthTicks(int months, const QCPRange& range) const {
  QVector<double> ticks;
  QDate first = QDateTime::fromSecsSinceEpoch(static_cast<qint64>(range.lower), zone_).date();
  first = QDate(first.year(), (first.month() - 1) / months * months + 1, 1);
  for (; ticks.empty() || ticks.back() <= range.upper; first = first.addMonths(months)) {
    ticks.append(static_cast<double>(first.startOfDay(zone_).toSecsSinceEpoch()));
  }
  return ticks;
}

QVector<double> LocalTimeTicker::createTickVector(double tick_step, const QCPRange& range) {
  if (const int months = StepOf(tick_step).months; months > 0) return MonthTicks(months, range);
  const double origin = tick_step > 2 * kDay ? kFirstMonday : 0;
  const auto round_local = [&](double time) {
    const int offset = Offset(time);
    return std::round((time + offset - origin) / tick_step) * tick_step + origin - offset;
  };
  QVector<double> ticks;
  double tick = round_local(range.lower - 2 * tick_step);
  while (tick <= range.upper + tick_step) {
    ticks.append(tick);
    // A step of local time may be an hour more or less in all.
    double next = round_local(tick + tick_step);
    if (next <= tick) next = tick + tick_step;
    tick = next;
  }
  return ticks;
}

QVector<QString> LocalTimeTicker::createLabelVector(const QVector<double>& ticks, const QLocale& /*locale*/,
                                                    QChar /*format_char*/, int /*precision*/) {
  bool changes = false;
  for (const double tick : ticks) changes = changes || Offset(tick) != Offset(ticks.front());
  QVector<QString> labels;
  std::optional<std::int64_t> last_day;
  for (const double tick : ticks) {
    const CivilTime local = LocalTime(std::llround(tick) * kMsPerSecond, zone_);
    const QString date = ToQString(style_.date(local));
    if (step_ >= kDay) {
      labels.append(date);
      continue;
    }
    QString label = ToQString(step_ < kMinute ? style_.time(local) : style_.hour_and_minute(local));
    if (changes) {
      const int minutes = std::abs(local.utc_offset_minutes);
      label += (local.utc_offset_minutes < 0 ? "-" : "+") + QString("%1").arg(minutes / 60, 2, 10, QChar('0'));
      if (minutes % 60 != 0) label += QString(":%1").arg(minutes % 60, 2, 10, QChar('0'));
    }
    if (DayNumber(local) != last_day) label += "\n" + date;
    last_day = DayNumber(local);
    labels.append(label);
  }
  return labels;
}

}  // namespace orvalis
