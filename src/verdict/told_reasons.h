#pragma once

#include <string_view>

#include "base/message.h"

namespace orvalis {

/// What `Explain` made of a verdict, as the history keeps it in English: for a window in another language. A text of
/// another version of the program, or one that was edited, comes back as it is.
[[nodiscard]] Message ToldReasons(std::string_view english);

}  // namespace orvalis
