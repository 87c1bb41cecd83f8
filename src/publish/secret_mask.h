#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace orvalis {

/// Shown instead of a password, whatever its length.
inline constexpr std::string_view kMask = "********";

/// `text` from byte `from` on, with each of `secrets` masked however it is written: each byte plain or percent-encoded
/// in either case, a blank also as "+". Overlapping and adjacent secrets get one mask. The text before `from` is
/// searched too, so that a secret that begins there is masked to its end.
[[nodiscard]] std::string MaskSecrets(std::string_view text, std::span<const std::string_view> secrets,
                                      std::size_t from = 0);

}  // namespace orvalis
