#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace orvalis {

/// What stands for a password wherever it would be seen, whatever its length.
inline constexpr std::string_view kMask = "********";

/// `text` from its byte `from` on, with a mask in the place of each of `secrets`, however a server writes it: each byte
/// as itself or percent-encoded in either case, a blank as "+" too. Overlapping and adjoining ones get one mask. What
/// stands before `from` is looked at all the same, so that the rest of a secret that begins there is not seen.
[[nodiscard]] std::string MaskSecrets(std::string_view text, std::span<const std::string_view> secrets,
                                      std::size_t from = 0);

}  // namespace orvalis
