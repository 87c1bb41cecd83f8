#include "platform/system/broker_socket.h"

#include <fcntl.h>
#include <sys/socket.h>

#include <cerrno>

namespace orvalis {

QHostAddress PeerOf(qintptr socket) {
  sockaddr_storage storage{};
  auto* const peer = reinterpret_cast<sockaddr*>(&storage);
  socklen_t size = sizeof storage;
  return getpeername(static_cast<int>(socket), peer, &size) == 0 ? QHostAddress(peer) : QHostAddress();
}

void KeepFromChildren(qintptr socket) { fcntl(static_cast<int>(socket), F_SETFD, FD_CLOEXEC); }

bool HasEnded(qintptr socket) {
  char byte = 0;
  const ssize_t count = recv(static_cast<int>(socket), &byte, 1, MSG_PEEK | MSG_DONTWAIT);
  return count == 0 || (count < 0 && errno != EAGAIN && errno != EWOULDBLOCK && errno != EINTR);
}

void DropUnsentAtClose(qintptr socket, bool drop) {
  const linger wanted{.l_onoff = drop ? 1 : 0, .l_linger = 0};
  setsockopt(static_cast<int>(socket), SOL_SOCKET, SO_LINGER, &wanted, sizeof wanted);
}

}  // namespace orvalis
