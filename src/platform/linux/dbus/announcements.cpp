#include "platform/linux/dbus/announcements.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QStringList>
#include <chrono>
#include <limits>
#include <utility>

#include "platform/linux/dbus/observation_interface.h"

namespace orvalis {
namespace {

/// A little longer than a cycle, so that a cycle with a reading is announced once.
constexpr std::chrono::milliseconds kLongestSilence{2500};
constexpr int kMostUnconfirmed = 2;
constexpr int kNoTimeout = std::numeric_limits<int>::max();

}  // namespace

void Announcements::Note(const Observation& now, const Observer::News& news) {
  if (!news.reading && !news.reasons && !last_.hasExpired(kLongestSilence.count())) return;
  missed_ = unconfirmed_ >= kMostUnconfirmed;
  if (!missed_) Send(now);
}

void Announcements::Send(const Observation& now) {
  last_.start();
  QDBusMessage signal = QDBusMessage::createSignal(path_, QStringLiteral("org.freedesktop.DBus.Properties"),
                                                   QStringLiteral("PropertiesChanged"));
  signal << kObservationInterface << BusValues(now) << QStringList();
  bus_.send(signal);
  // The bus answers in the order in which it reads.
  const QString bus_service = QStringLiteral("org.freedesktop.DBus");
  const QDBusMessage question = QDBusMessage::createMethodCall(bus_service, QStringLiteral("/org/freedesktop/DBus"),
                                                               bus_service, QStringLiteral("GetId"));
  ++unconfirmed_;
  auto* const answer = new QDBusPendingCallWatcher(bus_.asyncCall(question, kNoTimeout), this);
  connect(answer, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* done) {
    --unconfirmed_;
    done->deleteLater();
    if (unconfirmed_ == 0 && std::exchange(missed_, false)) Send(reader_.Now());
  });
}

}  // namespace orvalis
