#include "platform/system/broker_socket.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>

#include <cerrno>

namespace orvalis {

bool PeerIsThisMachine(qintptr socket) {
  sockaddr_storage peer{};
  socklen_t size = sizeof peer;
  if (getpeername(static_cast<int>(socket), reinterpret_cast<sockaddr*>(&peer), &size) != 0) return false;
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
