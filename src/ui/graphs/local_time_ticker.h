#pragma once

#include <qcustomplot.h>

#include <QTimeZone>
#include <cstdint>

#include "base/clock.h"

namespace orvalis {

/// `milliseconds` since 1970-01-01 UTC as a time of `zone`.
[[nodiscard]] CivilTime LocalTime(std::int64_t milliseconds, const QTimeZone& zone);

/// Ticks of a time axis at round local times. The axis counts seconds since 1970-01-01 UTC, so that an hour is always
/// an hour wide; around a change of summer time the ticks stay at round times and show their UTC offset, because
/// one of them occurs twice.
class LocalTimeTicker : public QCPAxisTicker {
 public:
  explicit LocalTimeTicker(const QTimeZone& zone, const TimeStyle& style = {}) : zone_(zone), style_(style) {}

 protected:
  double getTickStep(const QCPRange& range) override;
  int getSubTickCount(double tick_step) override;
  QVector<double> createTickVector(double tick_step, const QCPRange& range) override;
  QVector<QString> createLabelVector(const QVector<double>& ticks, const QLocale& locale, QChar format_char,
                                     int precision) override;

 private:
  /// Seconds east of Greenwich at `time`.
  [[nodiscard]] int Offset(double time) const;
  /// The first days of months, `months` apart.
  [[nodiscard]] QVector<double> MonthTicks(int months, const QCPRange& range) const;

  QTimeZone zone_;
  TimeStyle style_;
  double step_ = 0;
};

}  // namespace orvalis
