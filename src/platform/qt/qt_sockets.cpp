#include "platform/qt/qt_sockets.h"

#include <QHostAddress>
#include <QNetworkDatagram>
#include <QNetworkInterface>
#include <QNetworkProxy>
#include <QObject>
#include <QSysInfo>
#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>
#include <QUdpSocket>
#include <algorithm>
#include <array>
#include <chrono>
#include <utility>

#include "base/run_time_error.h"
#include "platform/system/shared_datagram.h"

namespace orvalis {
namespace {

/// The most that is held of what a client sends faster than it is read.
constexpr int kReadBuffer = 16'384;
/// What the system keeps for a slow reader.
constexpr int kSmallSendBuffer = 16'384;
constexpr int kBacklog = 128;
/// After this the server accepts again when it could not, such as for want of file descriptors.
constexpr std::chrono::milliseconds kAcceptPause{1'000};
/// Answered in one go, before other work gets its turn.
constexpr int kDatagramsAtOnce = 16;
/// The most that is read of one; the rest of it is dropped.
constexpr qint64 kLongestDatagram = 1'024;

QHostAddress Plain(const QHostAddress& address) {
  bool is_ipv4 = false;
  const quint32 ipv4 = address.toIPv4Address(&is_ipv4);
  return is_ipv4 ? QHostAddress(ipv4) : address;
}

network::Peer PeerOf(const QHostAddress& address) {
  const QHostAddress plain = Plain(address);
  return {.address = plain.toString().toStdString(), .loopback = plain.isLoopback()};
}

class QtStreamSocket final : public QObject, public network::StreamSocket {
 public:
  explicit QtStreamSocket(QTcpSocket* socket) : socket_(socket), peer_(PeerOf(socket->peerAddress())) {
    socket_->setParent(nullptr);
    socket_->setReadBufferSize(kReadBuffer);
    socket_->setSocketOption(QAbstractSocket::LowDelayOption, 1);
  }
  ~QtStreamSocket() override {
    socket_->disconnect(this);
    socket_->abort();
    socket_->deleteLater();
  }

  [[nodiscard]] const network::Peer& peer() const override { return peer_; }

  void Use(User& user) override {
    user_ = &user;
    connect(socket_, &QTcpSocket::readyRead, this, &QtStreamSocket::ReadAll);
    connect(socket_, &QTcpSocket::disconnected, this, [this] { user_->Closed(); });
    connect(socket_, &QTcpSocket::bytesWritten, this, [this] {
      if (socket_->bytesToWrite() == 0) user_->Sent();
    });
    ReadSoon();
    // It may have ended before anyone listened.
    if (socket_->state() != QAbstractSocket::ConnectedState) user_->Closed();
  }

  void Send(std::string_view bytes) override {
    socket_->write(bytes.data(), static_cast<qint64>(bytes.size()));
    socket_->flush();
  }

  [[nodiscard]] std::size_t unsent() const override { return static_cast<std::size_t>(socket_->bytesToWrite()); }

  void SetReading(bool reading) override {
    reading_ = reading;
    if (reading) ReadSoon();
  }

  void KeepLittleUnsent() override {
    socket_->setSocketOption(QAbstractSocket::SendBufferSizeSocketOption, kSmallSendBuffer);
  }

  void Close() override { socket_->disconnectFromHost(); }

 private:
  /// What came before is not signalled again.
  void ReadSoon() {
    if (socket_->bytesAvailable() > 0)
      QMetaObject::invokeMethod(
          this, [this] { ReadAll(); }, Qt::QueuedConnection);
  }

  void ReadAll() {
    std::array<char, kReadBuffer> bytes;
    while (reading_) {
      const qint64 count = socket_->read(bytes.data(), bytes.size());
      if (count <= 0) return;
      user_->Received({bytes.data(), static_cast<std::size_t>(count)});
    }
  }

  QTcpSocket* socket_;
  network::Peer peer_;
  User* user_ = nullptr;
  bool reading_ = true;
};

class QtListener final : public network::Listener {
 public:
  QtListener(const QHostAddress& address, std::uint16_t port, network::Sockets::Accept accept)
      : accept_(std::move(accept)) {
    server_.setProxy(QNetworkProxy::NoProxy);
    server_.setListenBacklogSize(kBacklog);
    QObject::connect(&server_, &QTcpServer::newConnection, &server_, [this] {
      while (QTcpSocket* const socket = server_.nextPendingConnection()) {
        accept_(std::make_unique<QtStreamSocket>(socket));
      }
    });
    QObject::connect(&server_, &QTcpServer::acceptError, &server_,
                     [this] { QTimer::singleShot(kAcceptPause, &server_, [this] { server_.resumeAccepting(); }); });
    if (server_.listen(address, port)) return;
    const bool in_use = server_.serverError() == QAbstractSocket::AddressInUseError;
    throw RunTimeError(in_use ? RunTimeError::kPortInUse : RunTimeError::kDeviceUnavailable,
                       server_.errorString().toStdString());
  }

 private:
  network::Sockets::Accept accept_;
  QTcpServer server_;
};

class QtDatagramListener final : public network::DatagramListener {
 public:
  QtDatagramListener(network::Sockets::SharedPort port, network::Sockets::Answer answer)
      : port_(std::move(port)), answer_(std::move(answer)) {
    const bool has_ipv4 = port_.ipv4 && Open(ipv4_, QHostAddress::AnyIPv4);
    has_ipv6_ = port_.ipv6 && Open(ipv6_, QHostAddress::AnyIPv6);
    // A system without IPv6 serves everyone else.
    if (has_ipv4 || (!port_.ipv4 && has_ipv6_)) {
      JoinGroups();
      return;
    }
    const QUdpSocket& failed = port_.ipv4 ? ipv4_ : ipv6_;
    throw RunTimeError(RunTimeError::kDeviceUnavailable, failed.errorString().toStdString());
  }

  void JoinGroups() override {
    only_on_.clear();
    const QHostAddress only_on(QString::fromStdString(port_.only_on));
    const QHostAddress group(QString::fromStdString(port_.group));
    const QHostAddress loopback_group(QString::fromStdString(port_.loopback_group));
    for (const QNetworkInterface& interface : QNetworkInterface::allInterfaces()) {
      for (const QNetworkAddressEntry& entry : interface.addressEntries()) {
        if (entry.ip() == only_on) only_on_.push_back(interface.index());
      }
      if (!has_ipv6_ || !interface.flags().testFlag(QNetworkInterface::IsRunning)) continue;
      // One that was joined before is refused, which does no harm.
      if (interface.flags().testFlag(QNetworkInterface::CanMulticast)) ipv6_.joinMulticastGroup(group, interface);
      if (interface.flags().testFlag(QNetworkInterface::IsLoopBack)) {
        ipv6_.joinMulticastGroup(loopback_group, interface);
      }
    }
  }

 private:
  bool Open(QUdpSocket& socket, QHostAddress::SpecialAddress address) {
    socket.setProxy(QNetworkProxy::NoProxy);
    const qintptr shared = MakeSharedDatagramSocket(address == QHostAddress::AnyIPv6);
    if (shared != -1) socket.setSocketDescriptor(shared, QAbstractSocket::UnconnectedState);
    if (!socket.bind(QHostAddress(address), port_.port, QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint)) {
      return false;
    }
    QObject::connect(&socket, &QUdpSocket::readyRead, &socket, [this, &socket] { AnswerWaiting(socket); });
    return true;
  }

  void AnswerWaiting(QUdpSocket& socket) {
    for (int i = 0; i < kDatagramsAtOnce; ++i) {
      // Tried even when nothing waits any more: the socket tells of no further datagram until one was asked for.
      const QNetworkDatagram datagram = socket.receiveDatagram(kLongestDatagram);
      if (!datagram.isValid()) break;
      if (!port_.only_on.empty() && !only_on_.contains(datagram.interfaceIndex())) continue;
      const QByteArray bytes = datagram.data();
      const std::string answer = answer_(
          {.bytes = {bytes.data(), static_cast<std::size_t>(bytes.size())}, .peer = PeerOf(datagram.senderAddress())});
      if (answer.empty()) continue;
      // Not `makeReply`, which would send from the address that the question was sent to, be that a broadcast one.
      QNetworkDatagram reply(QByteArray::fromStdString(answer), datagram.senderAddress(),
                             static_cast<quint16>(datagram.senderPort()));
      reply.setInterfaceIndex(datagram.interfaceIndex());
      socket.writeDatagram(reply);
    }
    if (socket.hasPendingDatagrams()) {
      QMetaObject::invokeMethod(
          &socket, [this, &socket] { AnswerWaiting(socket); }, Qt::QueuedConnection);
    }
  }

  network::Sockets::SharedPort port_;
  network::Sockets::Answer answer_;
  QUdpSocket ipv4_;
  QUdpSocket ipv6_;
  bool has_ipv6_ = false;
  QList<int> only_on_;  ///< numbers of the interfaces to hear
};

}  // namespace

std::unique_ptr<network::Listener> QtSockets::Listen(const std::string& address, std::uint16_t port, Accept accept) {
  // Qt's "::" is IPv6 alone.
  const QHostAddress wanted =
      address == "::" ? QHostAddress(QHostAddress::Any) : QHostAddress(QString::fromStdString(address));
  if (wanted.isNull()) throw RunTimeError(RunTimeError::kDeviceUnavailable, "\"" + address + "\" is not an address");
  return std::make_unique<QtListener>(wanted, port, std::move(accept));
}

std::unique_ptr<network::DatagramListener> QtSockets::AnswerDatagrams(const SharedPort& port, Answer answer) {
  return std::make_unique<QtDatagramListener>(port, std::move(answer));
}

std::string QtSockets::MachineName() const { return QSysInfo::machineHostName().section('.', 0, 0).toStdString(); }

std::vector<std::string> QtSockets::MachineAddresses() const {
  std::vector<std::string> addresses;
  for (const QHostAddress& address : QNetworkInterface::allAddresses()) {
    if (!address.isLinkLocal()) addresses.push_back(address.toString().toStdString());
  }
  std::stable_partition(addresses.begin(), addresses.end(), [](const std::string& address) {
    return QHostAddress(QString::fromStdString(address)).isLoopback();
  });
  return addresses;
}

}  // namespace orvalis
