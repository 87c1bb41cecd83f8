#include "publish/secret_mask.h"

#include <algorithm>
#include <optional>

namespace orvalis {
namespace {

constexpr std::size_t kEncodedSize = 3;  ///< of "%41"

/// The value of a hexadecimal digit, or -1.
int HexValue(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  return -1;
}

/// Whether `text` begins with `byte`, percent-encoded.
bool BeginsEncoded(char byte, std::string_view text) {
  if (text.size() < kEncodedSize || text[0] != '%') return false;
  const int high = HexValue(text[1]);
  const int low = HexValue(text[2]);
  return high >= 0 && low >= 0 && high * 16 + low == static_cast<unsigned char>(byte);
}

/// The length of `secret` as written at the beginning of `text`, if it is there.
std::optional<std::size_t> Written(std::string_view secret, std::string_view text) {
  std::size_t length = 0;
  for (; !secret.empty(); secret.remove_prefix(1)) {
    const std::string_view rest = text.substr(length);
    const bool encoded = BeginsEncoded(secret[0], rest);
    // "%25" may be an encoded percent sign, or a plain one followed by a "25" that belongs to the secret.
    if (encoded && secret[0] == '%') {
      const auto rest_encoded = Written(secret.substr(1), rest.substr(kEncodedSize));
      if (rest_encoded) return length + kEncodedSize + *rest_encoded;
      const auto literal = Written(secret.substr(1), rest.substr(1));
      return literal ? std::optional(length + 1 + *literal) : std::nullopt;
    }
    const bool itself = !rest.empty() && (rest[0] == secret[0] || (secret[0] == ' ' && rest[0] == '+'));
    if (!encoded && !itself) return std::nullopt;
    length += encoded ? kEncodedSize : 1;
  }
  return length;
}

}  // namespace

std::string MaskSecrets(std::string_view text, std::span<const std::string_view> secrets, std::size_t from) {
  std::string masked;
  std::size_t hidden_to = 0;  // the end of the secrets found so far
  bool in_mask = false;
  for (std::size_t at = 0; at < text.size(); ++at) {
    for (const std::string_view secret : secrets) {
      if (const auto length = Written(secret, text.substr(at))) hidden_to = std::max(hidden_to, at + *length);
    }
    if (at < from) continue;
    if (at >= hidden_to) {
      masked += text[at];
    } else if (!in_mask) {
      masked += kMask;
    }
    in_mask = at < hidden_to;
  }
  return masked;
}

}  // namespace orvalis
