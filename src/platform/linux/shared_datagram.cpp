#include "platform/system/shared_datagram.h"

#include <netinet/in.h>
#include <sys/socket.h>

namespace orvalis {

qintptr MakeSharedDatagramSocket(bool ipv6) {
  const int descriptor = socket(ipv6 ? AF_INET6 : AF_INET, SOCK_DGRAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  if (descriptor < 0) return -1;
  const int on = 1;
  // Each works only with programs that ask for the same; an older kernel may lack the second.
  setsockopt(descriptor, SOL_SOCKET, SO_REUSEADDR, &on, sizeof on);
  setsockopt(descriptor, SOL_SOCKET, SO_REUSEPORT, &on, sizeof on);
  // On which interface a datagram came: Qt asks for that only where it makes the socket.
  if (ipv6) {
    setsockopt(descriptor, IPPROTO_IPV6, IPV6_RECVPKTINFO, &on, sizeof on);
  } else {
    setsockopt(descriptor, IPPROTO_IP, IP_PKTINFO, &on, sizeof on);
  }
  return descriptor;
}

}  // namespace orvalis
