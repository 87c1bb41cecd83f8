#pragma once

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/message.h"

namespace orvalis::network {

/// One message to a broker.
struct MqttMessage {
  std::string topic;
  std::string payload;
  bool lasting = false;  ///< kept by the broker for whoever comes later, and acknowledged by it (QoS 1)

  [[nodiscard]] bool operator==(const MqttMessage& other) const = default;
};

/// How long a message that is not lasting may wait in a broker that knows MQTT 5.
inline constexpr std::chrono::seconds kMqttExpiry{10};

/// A broker, and how to come to it.
struct MqttAccess {
  std::string host;
  std::uint16_t port = 0;
  std::string user;      ///< "" for none
  std::string password;  ///< never to be shown
  bool tls = false;
  std::string ca_file;                ///< of the authority to trust; "" for the system's
  bool allow_plain_password = false;  ///< the password may go to another machine over an unencrypted line
  std::string client_id;
  std::optional<MqttMessage> will = {};  ///< what the broker says for a client that was lost

  [[nodiscard]] bool operator==(const MqttAccess& other) const = default;
};

/// Why there is no connection.
enum class MqttFailure : std::uint8_t {
  kNameNotFound,   ///< the host's name is unknown, or no name server answers
  kUnreachable,    ///< the machine refuses, or there is no way to it; the detail says which
  kNoAnswer,       ///< nothing was heard for too long
  kClosed,         ///< the broker ended the connection
  kBadLogin,       ///< the broker knows no such user and password
  kNotPermitted,   ///< the broker does not permit it
  kRefused,        ///< the broker refuses for another reason, which is the detail
  kCertificate,    ///< the broker's certificate is not from an authority that is trusted
  kWrongName,      ///< the broker's certificate is for another name
  kCaFile,         ///< the file of the authority cannot be read
  kNoTlsThere,     ///< the encrypted line was not agreed on; the detail says why
  kNoTlsHere,      ///< this program cannot encrypt
  kPlainPassword,  ///< the password would go to another machine in the clear
  kNameTaken,      ///< another program uses the station's name; the detail is its UUID
  kOther,          ///< the detail says what
};
struct MqttTrouble {
  MqttFailure failure = MqttFailure::kOther;
  std::string detail = {};
};
/// What went wrong, as a sentence for a person without its full stop. Without user and password.
[[nodiscard]] Message Explain(const MqttTrouble& trouble, const MqttAccess& access);

/// A connection to a broker. Never blocks. Its user is told everything from the event loop, never from within a call.
class MqttClient {
 public:
  class User {
   public:
    /// The broker has accepted the connection.
    virtual void Connected() = 0;
    /// A message on a topic that was subscribed to.
    virtual void Received(std::string_view topic, std::string_view payload) = 0;
    /// The broker has taken everything that was sent before `Ask`.
    virtual void Answered() = 0;
    /// There is no connection, or no longer. Nothing is called afterwards until the next `Connect`.
    virtual void Failed(const MqttTrouble& trouble) = 0;

   protected:
    ~User() = default;
  };

  virtual ~MqttClient() = default;

  /// Connects, in place of the connection that there is. `user` must outlive the connection.
  virtual void Connect(const MqttAccess& access, User& user) = 0;
  // The next three are for a connection that was accepted, and do nothing without one.
  virtual void Subscribe(const std::string& topic) = 0;
  virtual void Send(const MqttMessage& message) = 0;
  /// Asks the broker for `User::Answered`.
  virtual void Ask() = 0;
  /// Ends the connection in order, after what was sent: the broker forgets the will.
  virtual void Close() = 0;
  /// Ends the connection at once; what has not left the machine never does. The broker gives the will.
  virtual void Abort() = 0;
};

}  // namespace orvalis::network
