#pragma once

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>

#include "network/mqtt/mqtt_client.h"

struct mosquitto;

namespace orvalis {

/// Connections to MQTT brokers by libmosquitto, on the one event loop. Looking the name up, connecting and reading the
/// file of the authority can block: a thread of its own does that for each connection, shares nothing, and is left
/// alone when it is no longer wanted. MQTT 5, or 3.1.1 with a broker that does not speak it.
class MosquittoClient : public QObject, public network::MqttClient {
  Q_OBJECT
 public:
  MosquittoClient();
  ~MosquittoClient() override;

  void Connect(const network::MqttAccess& access, User& user) override;
  void Subscribe(const std::string& topic) override;
  void Send(const network::MqttMessage& message) override;
  void Ask() override;
  void Close() override;
  void Abort() override;

  /// Whether the library on this system can encrypt.
  [[nodiscard]] static bool HasTls();
  /// Whether a thread is still connecting, which nothing can stop.
  [[nodiscard]] static bool LeavesThread();

 private:
  /// What the library told.
  struct Event;
  /// A connection of the library. It belongs to the thread that makes it, and then to this object.
  struct Line;
  /// Carries a finished connection to the client, as long as that exists.
  class Mailbox {
   public:
    explicit Mailbox(MosquittoClient* client) : client_(client) {}
    void Deliver(const std::shared_ptr<Line>& line);
    void Close();

   private:
    std::mutex mutex_;
    MosquittoClient* client_;
  };

  void Begin(int version);
  void Opened(const std::shared_ptr<Line>& line);
  /// Lets the library work, and then tells the user what happened.
  void Drive(const std::function<int(mosquitto*)>& work);
  void Readable();
  void Writable();
  void KeepUp();
  /// Watches for room to send while there is something to send.
  void Watch();
  /// Says goodbye, and ends the connection.
  void Leave();
  void Forget();
  void Fail(const network::MqttTrouble& trouble);
  /// What happened to a connection in use, and to one that is being left.
  void Tell(const Event& event);
  void FollowLeaving(const Event& event);
  [[nodiscard]] network::MqttTrouble TroubleOf(int code) const;
  [[nodiscard]] mosquitto* handle() const;

  std::shared_ptr<Mailbox> mailbox_;
  network::MqttAccess access_;
  User* user_ = nullptr;
  std::shared_ptr<Line> line_;  ///< null without a connection
  bool accepted_ = false;       ///< by the broker
  bool leaving_ = false;        ///< the broker is still taking what was sent last
  bool connect_next_ = false;   ///< as soon as that is over
  int asked_ = 0;               ///< the number of the last question
  int version_ = 0;             ///< of MQTT, that is tried
  std::unique_ptr<QSocketNotifier> readable_;
  std::unique_ptr<QSocketNotifier> writable_;
  QTimer upkeep_timer_;
  QTimer patience_timer_;  ///< for what is under way
};

}  // namespace orvalis
