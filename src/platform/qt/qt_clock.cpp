#include "platform/qt/qt_clock.h"

#include <QDateTime>
#include <QLocale>

#include "platform/qt/user_time.h"

namespace orvalis {

QtClock::QtClock() : Clock(TimeStyleOf(QLocale::system())) {}

CivilTime QtClock::LocalNow() const { return LocalAt(QDateTime::currentMSecsSinceEpoch()); }

CivilTime QtClock::UtcNow() const { return TimeAt(QDateTime::currentMSecsSinceEpoch()); }

CivilTime QtClock::LocalAt(std::int64_t milliseconds) const {
  return TimeAt(milliseconds, QDateTime::fromMSecsSinceEpoch(milliseconds).offsetFromUtc() / 60);
}

}  // namespace orvalis
