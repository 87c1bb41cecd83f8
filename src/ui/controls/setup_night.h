#pragma once

#include <QString>

#include "ui/controls/theme.h"

class QWidget;

namespace orvalis {

/// What the setup dialog's controls need at night beyond the theme's own style sheet.
[[nodiscard]] QString SetupNightStyleSheet();

/// Gives a window of its own the desktop's colours or, at night, black and red. What the panel wears does not reach its
/// windows as a whole: they get the panel's style sheet, but not its palette.
void DressWindow(QWidget& window, const Theme& theme);

}  // namespace orvalis
