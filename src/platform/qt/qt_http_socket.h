#pragma once

#include <QObject>
#include <string>

#include "publish/http_socket.h"

class QTcpSocket;

namespace orvalis {

/// Connections over Qt's network sockets, name look-up included, on the one event loop.
class QtHttpSocket : public QObject, public HttpSocket {
  Q_OBJECT
 public:
  ~QtHttpSocket() override { Close(); }
  void Begin(const std::string& host, std::uint16_t port, std::string request, Handlers handlers) override;
  void Close() override;

  /// Whether a name look-up is still running. It runs in a thread of Qt's, cannot be stopped, and lasts as long as the
  /// name servers do not answer; Qt waits for it at the end of the application.
  [[nodiscard]] bool LeavesLookUp() const;

 private:
  void Connected();
  void ReadAll();
  void Failed();

  QTcpSocket* socket_ = nullptr;  ///< of the exchange under way; a new one for each
  std::string request_;
  Handlers handlers_;
  bool look_up_left_ = false;  ///< by an exchange before the one under way
};

}  // namespace orvalis
