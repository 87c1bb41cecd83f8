#include "platform/linux/dbus/bus_life.h"

#include <QByteArray>
#include <QFile>
#include <QLocalSocket>
#include <QUrl>
#include <optional>

namespace orvalis {
namespace {

/// Of one address such as "unix:path=/run/user/1000/bus,guid=…": a value of its list; empty without it.
QString ValueOf(const QString& address, const QString& key) {
  for (const QString& pair : address.mid(address.indexOf(':') + 1).split(',')) {
    if (pair.startsWith(key + '=')) return QUrl::fromPercentEncoding(pair.mid(key.size() + 1).toUtf8());
  }
  return {};
}

/// Nothing when it takes no connection.
std::optional<bool> Answers(const QString& name, QLocalSocket::SocketOptions options, int patience) {
  QLocalSocket socket;
  socket.setSocketOptions(options);
  socket.connectToServer(name);
  if (!socket.waitForConnected(patience)) {
    // With its queue full, it takes one as soon as somebody looks after it.
    if (socket.error() == QLocalSocket::SocketTimeoutError || socket.error() == QLocalSocket::UnknownSocketError) {
      return false;
    }
    return std::nullopt;
  }
  // Which ways of proving who one is are there? Any bus has a line to say to that.
  static const QByteArray question("\0AUTH\r\n", 7);
  socket.write(question);
  // One that closes the line instead lives too, and does the same to the library.
  return socket.waitForReadyRead(patience) || socket.state() != QLocalSocket::ConnectedState;
}

}  // namespace

QString SessionBusAddress() {
  QString address = qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS");
  if (!address.isEmpty()) return address;
  const QString folder = qEnvironmentVariable("XDG_RUNTIME_DIR");
  return folder.isEmpty() || !QFile::exists(folder + "/bus") ? QString() : "unix:path=" + folder + "/bus";
}

bool BusAnswers(const QString& address, std::chrono::milliseconds patience) {
  const int wait = static_cast<int>(patience.count());
  // The library takes the first that can be connected to.
  for (const QString& one : address.split(';')) {
    const QString path = ValueOf(one, QStringLiteral("path"));
    const QString abstract = ValueOf(one, QStringLiteral("abstract"));
    if (!one.startsWith("unix:") || (path.isEmpty() && abstract.isEmpty())) return true;
    const std::optional<bool> answers = path.isEmpty() ? Answers(abstract, QLocalSocket::AbstractNamespaceOption, wait)
                                                       : Answers(path, QLocalSocket::NoOptions, wait);
    if (answers) return *answers;
  }
  return true;
}

}  // namespace orvalis
