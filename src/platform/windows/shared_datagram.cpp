#include "platform/system/shared_datagram.h"

namespace orvalis {

qintptr MakeSharedDatagramSocket(bool /*ipv6*/) { return -1; }

}  // namespace orvalis
