#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace orvalis::network {

/// Who is at the other end.
struct Peer {
  std::string address;    ///< numeric; an IPv4 address in its own notation on a socket for both families, too
  bool loopback = false;  ///< a program on this machine
};

/// One accepted connection. Never blocks. Destroying it aborts the connection; it must not be destroyed from one of its
/// user's functions.
class StreamSocket {
 public:
  /// Whoever reads and writes the connection.
  class User {
   public:
    /// Bytes came; called only while reading is on.
    virtual void Received(std::string_view bytes) = 0;
    /// The system has taken everything that was to be sent.
    virtual void Sent() = 0;
    /// The connection has ended, by whichever side. Nothing else is called afterwards.
    virtual void Closed() = 0;

   protected:
    ~User() = default;
  };

  virtual ~StreamSocket() = default;

  [[nodiscard]] virtual const Peer& peer() const = 0;
  /// Begins reading. `user` must outlive the socket.
  virtual void Use(User& user) = 0;
  /// Sends `bytes`, and keeps what the system does not take at once.
  virtual void Send(std::string_view bytes) = 0;
  /// How much is kept, in bytes.
  [[nodiscard]] virtual std::size_t unsent() const = 0;
  /// Stops reading, so that the peer is held up after a bounded number of bytes, or goes on.
  virtual void SetReading(bool reading) = 0;
  /// Lets the system keep little of what a slow peer has not fetched, so that `unsent` shows early that it is slow.
  virtual void KeepLittleUnsent() = 0;
  /// Closes the connection once everything is sent.
  virtual void Close() = 0;
};

/// Accepts connections until it is destroyed.
class Listener {
 public:
  virtual ~Listener() = default;
};

/// One packet and where it came from.
struct Datagram {
  std::string_view bytes;
  Peer peer;
};

/// Answers datagrams until it is destroyed.
class DatagramListener {
 public:
  virtual ~DatagramListener() = default;
  /// Joins the multicast groups on interfaces that came up since.
  virtual void JoinGroups() = 0;
};

/// What the system gives for talking to others.
class Sockets {
 public:
  using Accept = std::function<void(std::unique_ptr<StreamSocket>)>;
  /// Returns what to answer; "" is no answer.
  using Answer = std::function<std::string(const Datagram&)>;

  /// A port that several programs share.
  struct SharedPort {
    std::uint16_t port;
    std::string group;           ///< an IPv6 multicast group to join on every interface
    std::string loopback_group;  ///< one to join within the machine
    std::string only_on;         ///< hear only the interface that has this address; "" for all
    bool ipv4 = true;
    bool ipv6 = true;  ///< where the system has it
  };

  virtual ~Sockets() = default;

  /// Listens on `address`; "::" means all addresses of both families. Throws RunTimeError kPortInUse when another
  /// program has the port, and kDeviceUnavailable with the reason when it cannot be had otherwise.
  [[nodiscard]] virtual std::unique_ptr<Listener> Listen(const std::string& address, std::uint16_t port,
                                                         Accept accept) = 0;
  /// Answers datagrams on a port that other programs may use too, broadcast ones included. Throws RunTimeError
  /// kDeviceUnavailable with the reason.
  [[nodiscard]] virtual std::unique_ptr<DatagramListener> AnswerDatagrams(const SharedPort& port, Answer answer) = 0;
  /// What this machine is called, without its domain.
  [[nodiscard]] virtual std::string MachineName() const = 0;
};

}  // namespace orvalis::network
