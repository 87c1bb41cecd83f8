#pragma once

#include <functional>
#include <optional>
#include <string_view>

#include "base/message.h"

namespace orvalis {

/// The message of `phrase` whose English is `english`: for what comes as text alone, from a file or another process.
/// Each part goes through `part`, which refuses it with nothing. Nothing where the text is not of this phrase. A phrase
/// has at most three parts, in their order.
[[nodiscard]] std::optional<Message> Recognized(
    std::string_view english, Phrase phrase, const std::function<std::optional<Message>(std::string_view text)>& part);

}  // namespace orvalis
