#include "platform/system/broker_socket.h"

#include <winsock2.h>
#include <ws2tcpip.h>
// After them:
#include <windows.h>

namespace orvalis {

bool PeerIsThisMachine(qintptr socket) {
  sockaddr_storage peer{};
  int size = sizeof peer;
  if (getpeername(static_cast<SOCKET>(socket), reinterpret_cast<sockaddr*>(&peer), &size) != 0) return false;
  constexpr unsigned kLoopbackNet = 127;
  if (peer.ss_family == AF_INET) {
    return ntohl(reinterpret_cast<const sockaddr_in&>(peer).sin_addr.s_addr) >> 24 == kLoopbackNet;
  }
  if (peer.ss_family != AF_INET6) return false;
  const in6_addr& address = reinterpret_cast<const sockaddr_in6&>(peer).sin6_addr;
  constexpr int kFirstOfIpv4 = 12;
  return IN6_IS_ADDR_LOOPBACK(&address) ||
         (IN6_IS_ADDR_V4MAPPED(&address) && address.s6_addr[kFirstOfIpv4] == kLoopbackNet);
}

void KeepFromChildren(qintptr socket) {
  SetHandleInformation(reinterpret_cast<HANDLE>(socket), HANDLE_FLAG_INHERIT, 0);
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
