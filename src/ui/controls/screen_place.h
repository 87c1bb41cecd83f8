#pragma once

class QWidget;

namespace orvalis {

/// Moves a window that is shown so that all of it, its frame too, is on its screen. One that is too large keeps its
/// title and its left edge there.
void MoveOntoScreen(QWidget& window);

/// How many pixels a window may still grow downwards before its frame leaves the screen; at least 0.
[[nodiscard]] int RoomBelow(const QWidget& window);

}  // namespace orvalis
