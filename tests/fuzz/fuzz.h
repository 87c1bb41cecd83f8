#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

/// What a target does with one input. It ends the process when something does not hold.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace orvalis::fuzz {

/// Ends the process, which the fuzzer takes for a find, unless it `holds`.
inline void Require(bool holds, const char* what, std::string_view about = {}) {
  if (holds) return;
  std::fprintf(stderr, "It does not hold that %s: %.*s\n", what, static_cast<int>(about.size()), about.data());
  std::abort();
}

/// Takes an input apart from its beginning. What is not there reads as 0 or "".
class Input {
 public:
  Input(const std::uint8_t* data, std::size_t size) : rest_(reinterpret_cast<const char*>(data), size) {}

  [[nodiscard]] bool empty() const { return rest_.empty(); }
  std::uint8_t Byte() {
    const std::string_view byte = Text(1);
    return byte.empty() ? std::uint8_t{0} : static_cast<std::uint8_t>(byte[0]);
  }
  /// Up to `count` bytes.
  std::string_view Text(std::size_t count) {
    const std::string_view text = rest_.substr(0, count);
    rest_.remove_prefix(text.size());
    return text;
  }
  /// Up to the next `end`, which is dropped.
  std::string_view Until(char end) {
    const std::string_view text = Text(std::min(rest_.find(end), rest_.size()));
    Text(1);
    return text;
  }
  std::string_view Rest() { return Text(rest_.size()); }
  template <typename Number>
  Number Raw() {
    Number number{};
    const std::string_view bytes = Text(sizeof number);
    std::memcpy(&number, bytes.data(), bytes.size());
    return number;
  }

 private:
  std::string_view rest_;
};

}  // namespace orvalis::fuzz
