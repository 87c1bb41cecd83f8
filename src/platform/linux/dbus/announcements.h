#pragma once

#include <QDBusConnection>
#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <utility>

#include "app/observer.h"

namespace orvalis {

/// Tells all on a bus how things are, as changed properties of the observation: at each reading, at each change of the
/// verdict or its reasons, and every few seconds while no reading comes, because a listener that hears nothing has to
/// expect that the program hangs.
///
/// A bus that does not read is told nothing more until it does: what waits for it is bounded.
class Announcements : public QObject {
 public:
  Announcements(QDBusConnection bus, QString path) : bus_(std::move(bus)), path_(std::move(path)) { last_.start(); }

  /// To be called at each update of the observer, and at least once a second.
  void Note(const Observation& now, const Observer::News& news);

 private:
  void Send(const Observation& now);

  QDBusConnection bus_;
  QString path_;
  QElapsedTimer last_;   ///< since the last announcement
  int unconfirmed_ = 0;  ///< announcements that the bus is not known to have read
};

}  // namespace orvalis
