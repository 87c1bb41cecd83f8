#pragma once

#include <QHostAddress>
#include <QtGlobal>

namespace orvalis {

// What a connection's socket does not tell through the library that owns it.

/// The address of the other end of `socket`; null when it has none.
[[nodiscard]] QHostAddress PeerOf(qintptr socket);
/// Programs that are started later do not get `socket`: it would stay open with them when this one has ended.
void KeepFromChildren(qintptr socket);
/// Whether the other end has closed the connection, or it has failed.
[[nodiscard]] bool HasEnded(qintptr socket);
/// Whether closing `socket` drops what has not been sent, where the system would otherwise send it later.
void DropUnsentAtClose(qintptr socket, bool drop);

}  // namespace orvalis
