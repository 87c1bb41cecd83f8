#include "platform/qt/qt_clock.h"

#include <QDateTime>

namespace orvalis {
namespace {

CivilTime ToCivilTime(const QDateTime& moment) {
  const QDate date = moment.date();
  const QTime time = moment.time();
  return {.year = date.year(),
          .month = date.month(),
          .day = date.day(),
          .hour = time.hour(),
          .minute = time.minute(),
          .second = time.second(),
          .millisecond = time.msec(),
          .utc_offset_minutes = moment.offsetFromUtc() / 60};
}

}  // namespace

CivilTime QtClock::LocalNow() const { return ToCivilTime(QDateTime::currentDateTime()); }

CivilTime QtClock::UtcNow() const { return ToCivilTime(QDateTime::currentDateTimeUtc()); }

CivilTime QtClock::LocalAt(std::int64_t milliseconds) const {
  return ToCivilTime(QDateTime::fromMSecsSinceEpoch(milliseconds));
}

}  // namespace orvalis
