#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QTimer>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "base/once_until_mended.h"
#include "platform/linux/dbus/announcements.h"
#include "server/weather_server.h"

namespace orvalis {

/// The automation object on the session bus, with the observation as its second interface, as docs/dbus.md describes
/// them. Each client has a `Weather` of its own from its first call to either until it leaves the bus, however it
/// leaves.
///
/// Without a bus, or while another program owns the name, it reports that once and retries every minute.
class WeatherService : public QDBusVirtualObject, public WeatherServer {
  Q_OBJECT
 public:
  explicit WeatherService(Parts parts);
  ~WeatherService() override;
  WeatherService(const WeatherService&) = delete;
  WeatherService& operator=(const WeatherService&) = delete;

  bool Start() override;
  [[nodiscard]] bool had_clients() const override { return had_clients_; }
  void Announce(const Observation& now, const Observer::News& news) override;

  [[nodiscard]] QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  // Called by the bus library by name.
  Q_SLOT void NoteNameOwner(const QString& name, const QString& previous, const QString& current);
  Q_SLOT void NoteDisconnected();

  /// Answers or throws BusError, AutomationError or RunTimeError. Answers of calls that wait come later.
  void Handle(const QDBusMessage& call);
  void HandleProperties(const QDBusMessage& call);
  void ReadObservation(const QDBusMessage& call, bool is_set);
  void HandleMethod(const QDBusMessage& call);
  void Set(const QDBusMessage& call, const WeatherMemberInfo& property, const QVariant& value);
  [[nodiscard]] QVariantMap All(const Weather& object) const;

  [[nodiscard]] Weather& ObjectOf(const QDBusMessage& call);
  void Answer(const QDBusMessage& call, const QVariantList& values = {}) const;
  void AnswerError(const QDBusMessage& call, const std::exception_ptr& error) const;
  /// Answers `call` when the member that waits is done.
  [[nodiscard]] Weather::Done LaterAnswer(const QDBusMessage& call) const;

  void EndClient(const QString& client);
  [[nodiscard]] std::string TakeName();
  void TryAgain(const std::string& reason);

  Parts parts_;
  std::optional<QDBusConnection> bus_;
  std::unique_ptr<Announcements> announcements_;  ///< as long as `bus_`
  bool has_name_ = false;
  bool started_ = false;                                 ///< a connection has been tried
  std::map<QString, std::unique_ptr<Weather>> clients_;  ///< by the client's own name on the bus
  bool had_clients_ = false;
  QTimer retry_;
  OnceUntilMended trouble_;
};

}  // namespace orvalis
