#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace orvalis::network {

/// The fields of a query or of a form, "%41" and "+" decoded.
class FormFields {
 public:
  /// `text` is "name=value&…", as in `application/x-www-form-urlencoded`.
  explicit FormFields(std::string_view text);

  enum class Case { kExact, kIgnored };
  /// The value of the first field called `name`: "" when it has none, nothing when there is no such field. Valid as
  /// long as this object.
  [[nodiscard]] std::optional<std::string_view> Find(std::string_view name, Case name_case) const;

 private:
  std::vector<std::pair<std::string, std::string>> fields_;
};

}  // namespace orvalis::network
