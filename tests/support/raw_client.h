#pragma once

#include <QByteArray>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QEventLoop>
#include <QHostAddress>
#include <QTcpSocket>
#include <string>

namespace orvalis::test {

/// Runs the event loop until `done`, for ten seconds at most. Returns whether it was.
template <typename Done>
bool RunUntil(Done done) {
  const QDeadlineTimer end(10'000);
  while (!done()) {
    if (end.hasExpired()) return false;
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
  }
  return true;
}

/// A client in the thread of the server, which says exactly what it is told to.
class RawClient {
 public:
  explicit RawClient(quint16 port, const QString& address = "127.0.0.1") {
    socket_.connectToHost(QHostAddress(address), port);
    RunUntil([this] { return socket_.state() != QAbstractSocket::ConnectingState; });
  }

  void Send(const std::string& bytes) {
    socket_.write(bytes.data(), static_cast<qint64>(bytes.size()));
    socket_.flush();
  }
  /// One answer with a length, or what came before the server closed; "" after ten seconds of nothing.
  std::string Answer() {
    RunUntil([this] { return Length() > 0 || Ended(); });
    const qsizetype length = Length() > 0 ? Length() : received_.size();
    std::string answer = received_.left(length).toStdString();
    received_.remove(0, length);
    return answer;
  }
  std::string Ask(const std::string& bytes) {
    Send(bytes);
    return Answer();
  }
  bool Ended() {
    received_ += socket_.readAll();
    return socket_.state() == QAbstractSocket::UnconnectedState;
  }
  bool WaitForEnd() {
    return RunUntil([this] { return Ended(); });
  }
  /// What has come and was not taken.
  const QByteArray& received() {
    received_ += socket_.readAll();
    return received_;
  }
  /// Leaves what comes to the system, or no longer.
  void SetReading(bool reading) { socket_.setReadBufferSize(reading ? 0 : 1); }

 private:
  /// Of the first complete answer, 0 while there is none.
  qsizetype Length() {
    received_ += socket_.readAll();
    const qsizetype end = received_.indexOf("\r\n\r\n");
    if (end < 0) return 0;
    const qsizetype field = received_.left(end).indexOf("Content-Length: ");
    const qsizetype body =
        field < 0 ? 0 : received_.mid(field + 16, received_.indexOf("\r\n", field) - field - 16).toLongLong();
    return received_.size() >= end + 4 + body ? end + 4 + body : 0;
  }

  QTcpSocket socket_;
  QByteArray received_;
};

}  // namespace orvalis::test
