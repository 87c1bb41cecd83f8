#pragma once

#include "ui/controls/theme.h"

class QWidget;

namespace orvalis {

/// Gives `window` and its controls the desktop's colours or, at night, black and red. Returns the current theme. Call
/// it for each window: a child window inherits the panel's style sheet, but not its palette.
Theme DressWindow(QWidget& window, bool night);

/// Whether the window of `widget` is dressed for the night; false for null.
[[nodiscard]] bool IsNight(const QWidget* widget);

}  // namespace orvalis
