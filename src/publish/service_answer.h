#pragma once

#include <string>
#include <string_view>

namespace orvalis {

/// Whether `answer`, of which more may come, holds the line with the status.
[[nodiscard]] bool HasStatusLine(std::string_view answer);

/// Why a service did not take the readings, by its `answer` (head and text, as much as came), or "" when it did.
///
/// The status decides, and with a good one the text too: many services say "200 OK" and in the text that the password
/// is wrong. None of the server's words is repeated but the status: it may send back what it was sent, in any writing.
[[nodiscard]] std::string ServiceObjection(std::string_view answer);

}  // namespace orvalis
