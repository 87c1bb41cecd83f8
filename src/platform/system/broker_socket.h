#pragma once

#include <QtGlobal>

namespace orvalis {

// What a connection's socket does not tell through the library that owns it.

/// Whether the other end of `socket` is a program on this machine: 127.0.0.0/8 or ::1.
[[nodiscard]] bool PeerIsThisMachine(qintptr socket);
/// Programs that are started later do not get `socket`: it would stay open with them when this one has ended.
void KeepFromChildren(qintptr socket);
/// Whether the other end has closed the connection, or it has failed.
[[nodiscard]] bool HasEnded(qintptr socket);
/// Whether closing `socket` drops what has not been sent, where the system would otherwise send it later.
void DropUnsentAtClose(qintptr socket, bool drop);

}  // namespace orvalis
