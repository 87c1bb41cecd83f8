#include "platform/qt/qt_http_socket.h"

#include <QNetworkProxy>
#include <QTcpSocket>
#include <array>
#include <utility>

namespace orvalis {
namespace {

/// The most that is held of what a server sends faster than it is read.
constexpr qint64 kReadBuffer = 65'536;

bool LooksUp(const QTcpSocket* socket) {
  return socket != nullptr && socket->state() == QAbstractSocket::HostLookupState;
}

}  // namespace

void QtHttpSocket::Begin(const std::string& host, std::uint16_t port, std::string request, Handlers handlers) {
  Close();
  request_ = std::move(request);
  handlers_ = std::move(handlers);
  socket_ = new QTcpSocket(this);
  socket_->setProxy(QNetworkProxy::NoProxy);
  socket_->setReadBufferSize(kReadBuffer);
  connect(socket_, &QTcpSocket::connected, this, &QtHttpSocket::Connected);
  connect(socket_, &QTcpSocket::readyRead, this, &QtHttpSocket::ReadAll);
  connect(socket_, &QTcpSocket::errorOccurred, this, &QtHttpSocket::Failed);
  socket_->connectToHost(QString::fromStdString(host), port);
}

void QtHttpSocket::Close() {
  QTcpSocket* const socket = std::exchange(socket_, nullptr);
  if (socket == nullptr) return;
  look_up_left_ = look_up_left_ || LooksUp(socket);
  socket->disconnect(this);
  socket->abort();
  // It may be the one whose signal is being handled.
  socket->deleteLater();
  request_.clear();
}

bool QtHttpSocket::LeavesLookUp() const { return look_up_left_ || LooksUp(socket_); }

void QtHttpSocket::Connected() {
  socket_->write(request_.data(), static_cast<qint64>(request_.size()));
  request_.clear();
  handlers_.connected();
}

void QtHttpSocket::ReadAll() {
  std::array<char, 16'384> bytes;
  QTcpSocket* const socket = socket_;
  while (socket == socket_) {  // a handler may have closed it
    const qint64 count = socket->read(bytes.data(), bytes.size());
    if (count <= 0) return;
    handlers_.received({bytes.data(), static_cast<std::size_t>(count)});
  }
}

void QtHttpSocket::Failed() {
  QTcpSocket* const socket = socket_;
  const bool at_end = socket->error() == QAbstractSocket::RemoteHostClosedError;
  const std::string reason = socket->errorString().toStdString();
  ReadAll();
  if (socket != socket_) return;
  // The handlers may begin another exchange, which replaces them.
  const Handlers handlers = handlers_;
  Close();
  if (at_end) {
    handlers.closed();
  } else {
    handlers.failed(reason);
  }
}

}  // namespace orvalis
