#include "platform/qt/qt_clock.h"

#include <QDateTime>
#include <QLocale>

#include "platform/qt/user_time.h"

namespace orvalis {

QtClock::QtClock() : Clock(TimeStyleOf(QLocale::system())) {}

CivilTime QtClock::LocalNow() const {
  const QDateTime now = QDateTime::currentDateTime();
  return TimeAt(now.toMSecsSinceEpoch(), now.offsetFromUtc() / 60);
}

CivilTime QtClock::UtcNow() const { return TimeAt(QDateTime::currentMSecsSinceEpoch()); }

}  // namespace orvalis
