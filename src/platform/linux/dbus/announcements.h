#pragma once

#include <QDBusConnection>
#include <QElapsedTimer>
#include <QObject>
#include <QString>
#include <utility>

#include "app/observer.h"
#include "server/observation_members.h"

namespace orvalis {

/// Tells all on a bus how things are, as changed properties of the observation: at each reading, at each change of the
/// verdict or its reasons, and every few seconds while no reading comes, because a listener that hears nothing has to
/// expect that the program hangs.
///
/// A bus that does not read is told nothing more until it does, and then how things are by then: neither does what
/// waits for it grow, nor does an old "safe" stand longer than a moment.
class Announcements : public QObject {
 public:
  /// `reader` must outlive the announcements.
  Announcements(QDBusConnection bus, QString path, const ObservationReader& reader)
      : bus_(std::move(bus)), path_(std::move(path)), reader_(reader) {
    last_.start();
  }

  /// To be called at each update of the observer, and at least once a second.
  void Note(const Observation& now, const Observer::News& news);

 private:
  void Send(const Observation& now);

  QDBusConnection bus_;
  QString path_;
  const ObservationReader& reader_;
  QElapsedTimer last_;   ///< since the last announcement
  int unconfirmed_ = 0;  ///< announcements that the bus is not known to have read
  bool missed_ = false;  ///< one was not sent
};

}  // namespace orvalis
