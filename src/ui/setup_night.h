#pragma once

#include <QString>

namespace orvalis {

/// What the setup dialog's controls need at night beyond the theme's own style sheet.
[[nodiscard]] QString SetupNightStyleSheet();

}  // namespace orvalis
