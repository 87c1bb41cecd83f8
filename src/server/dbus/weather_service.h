#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QTimer>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "server/weather.h"

namespace orvalis {

/// The automation object on the session bus, as docs/dbus.md describes it. Each client has a `Weather` of its own from
/// its first call until it leaves the bus, however it leaves.
///
/// Without a bus, or while another program has the name, it says so once and tries again each minute.
class WeatherService : public QDBusVirtualObject {
  Q_OBJECT
 public:
  struct Parts {
    /// Makes the object of a new client. What it throws is the answer to the client's call.
    std::function<std::unique_ptr<Weather>()> create;
    /// Told why clients cannot come, and that they can again.
    std::function<void(const std::string&)> record;
    /// Whether the program ends with its last client.
    bool ends_with_last_client = false;
  };

  explicit WeatherService(Parts parts);
  ~WeatherService() override;
  WeatherService(const WeatherService&) = delete;
  WeatherService& operator=(const WeatherService&) = delete;

  /// Goes on the bus and offers the object. Returns whether that worked at once.
  bool Start();
  /// Whether a client ever came.
  [[nodiscard]] bool had_clients() const { return had_clients_; }

  [[nodiscard]] QString introspect(const QString& path) const override;
  bool handleMessage(const QDBusMessage& message, const QDBusConnection& connection) override;

 private:
  // Called by the bus library by name.
  Q_SLOT void NoteNameOwner(const QString& name, const QString& former, const QString& current);
  Q_SLOT void NoteDisconnected();

  /// Answers or throws BusError, AutomationError or RunTimeError. Answers of calls that wait come later.
  void Handle(const QDBusMessage& call);
  void HandleProperties(const QDBusMessage& call);
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
  std::map<QString, std::unique_ptr<Weather>> clients_;  ///< by the client's own name on the bus
  bool had_clients_ = false;
  QTimer retry_;
  std::string standing_problem_;
};

}  // namespace orvalis
