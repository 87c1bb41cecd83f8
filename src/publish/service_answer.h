#pragma once

#include <string>
#include <string_view>

namespace orvalis {

/// Whether `answer`, which may be incomplete, contains the status line.
[[nodiscard]] bool HasStatusLine(std::string_view answer);

/// Why a service did not accept the readings, from its `answer` (headers and body as far as received), or "" when it
/// did.
///
/// The status decides, and after a good one the body: many services answer "200 OK" and report a wrong password in the
/// body. Only the status is quoted, because a server may echo the password in any form.
[[nodiscard]] std::string ServiceObjection(std::string_view answer);

}  // namespace orvalis
