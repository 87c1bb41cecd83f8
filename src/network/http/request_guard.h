#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "network/http/http_message.h"

namespace orvalis::network {

/// Keeps out what web pages of other sites make a visitor's browser ask for. A page whose name was rebound to this
/// machine's address gives itself away by the name in "Host", any other page by "Origin" or "Sec-Fetch-Site".
class RequestGuard {
 public:
  /// `names` are what this machine is called besides its addresses. `allowed_origin` may read what is shared: "" for
  /// none, "*" for every page, otherwise as "https://example.org".
  RequestGuard(std::vector<std::string> names, std::string allowed_origin)
      : names_(std::move(names)), allowed_origin_(std::move(allowed_origin)) {}

  /// Why `request` is refused; nothing when it is not. `shared` tells whether other pages may read the resource.
  [[nodiscard]] std::optional<HttpResponse> Refuse(const HttpRequest& request, bool shared) const;
  /// The origin that the answer to `request` for a shared resource names as allowed; "" for none.
  [[nodiscard]] std::string_view AllowedOrigin(const HttpRequest& request) const;

 private:
  [[nodiscard]] bool IsOurName(std::string_view authority) const;
  [[nodiscard]] bool IsForeignPage(const HttpRequest& request) const;

  std::vector<std::string> names_;
  std::string allowed_origin_;
};

/// The names in a text, separated by blanks, commas or semicolons.
[[nodiscard]] std::vector<std::string> SplitNames(std::string_view text);

}  // namespace orvalis::network
