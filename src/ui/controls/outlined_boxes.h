#pragma once

namespace orvalis {

/// Gives boxes and options to tick an outline on dark colours, where Qt's own style draws them as dark as the ground:
/// one could not see where to click. The styles of desktops stay as they are. To be called once, after the application
/// was made.
void OutlineBoxes();

}  // namespace orvalis
