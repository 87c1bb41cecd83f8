#include "platform/system/broker_socket.h"

#include <winsock2.h>
// After them:
#include <windows.h>

namespace orvalis {

QHostAddress PeerOf(qintptr socket) {
  sockaddr_storage storage{};
  auto* const peer = reinterpret_cast<sockaddr*>(&storage);
  int size = sizeof storage;
  return getpeername(static_cast<SOCKET>(socket), peer, &size) == 0 ? QHostAddress(peer) : QHostAddress();
}

void KeepFromChildren(qintptr socket) {
  const auto handle = reinterpret_cast<HANDLE>(socket);  // NOLINT(performance-no-int-to-ptr): a socket is one
  SetHandleInformation(handle, HANDLE_FLAG_INHERIT, 0);
}

bool HasEnded(qintptr socket) {
  char byte = 0;
  // The library made it non-blocking.
  const int count = recv(static_cast<SOCKET>(socket), &byte, 1, MSG_PEEK);
  return count == 0 || (count < 0 && WSAGetLastError() != WSAEWOULDBLOCK);
}

void DropUnsentAtClose(qintptr socket, bool drop) {
  const linger wanted{.l_onoff = static_cast<u_short>(drop ? 1 : 0), .l_linger = 0};
  setsockopt(static_cast<SOCKET>(socket), SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&wanted), sizeof wanted);
}

}  // namespace orvalis
