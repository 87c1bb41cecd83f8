#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace orvalis::indi {

/// Where Orvalis serves its readings.
struct Address {
  std::string host = "127.0.0.1";  ///< a name, or an address of either kind without brackets
  std::uint16_t port = 11111;

  /// None when the texts are not a host and a port from 1 to 65535.
  [[nodiscard]] static std::optional<Address> Read(std::string_view host, std::string_view port);
  /// "host:port", with brackets where the host has colons itself.
  [[nodiscard]] std::string Text() const;
  bool operator==(const Address&) const = default;
};

}  // namespace orvalis::indi
