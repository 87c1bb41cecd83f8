#pragma once

#include <QtGlobal>

namespace orvalis {

/// A datagram socket, not bound yet, whose port other programs may bind too even if they ask for that in the system's
/// other way; -1 where Qt's own way is enough, or none can be had.
[[nodiscard]] qintptr MakeSharedDatagramSocket(bool ipv6);

}  // namespace orvalis
