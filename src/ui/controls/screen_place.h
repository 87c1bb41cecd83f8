#pragma once

#include <QSizeF>

class QWidget;

namespace orvalis {

/// Moves a window that is shown so that all of it, its frame too, is on its screen. One that is too large keeps its
/// title and its left edge there.
void MoveOntoScreen(QWidget& window);

/// Sizes a window that is not shown yet, and places it beside `other` so that this stays in sight: `usual` large, or
/// less where there is less room, but at least `least_width` pixels wide. Where it has to cover some of `other`, that
/// is what is nearest to the edge of the screen. `other` may be null.
void PlaceBeside(QWidget& window, const QWidget* other, QSizeF usual, double least_width);

/// How many pixels a window may still grow downwards before its frame leaves the screen; at least 0.
[[nodiscard]] int RoomBelow(const QWidget& window);

}  // namespace orvalis
