#include "network/http/form_fields.h"

#include <charconv>

#include "network/http/http_message.h"

namespace orvalis::network {
namespace {

std::string Decode(std::string_view text) {
  std::string decoded;
  decoded.reserve(text.size());
  for (std::size_t i = 0; i < text.size(); ++i) {
    unsigned code = 0;
    const char* const digits = text.data() + i + 1;
    if (text[i] == '%' && i + 2 < text.size() && std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2) {
      decoded += static_cast<char>(code);
      i += 2;
    } else {
      decoded += text[i] == '+' ? ' ' : text[i];
    }
  }
  return decoded;
}

}  // namespace

FormFields::FormFields(std::string_view text) {
  while (!text.empty()) {
    const std::string_view field = text.substr(0, text.find('&'));
    text.remove_prefix(std::min(field.size() + 1, text.size()));
    if (field.empty()) continue;
    const std::size_t equals = std::min(field.find('='), field.size());
    fields_.emplace_back(Decode(field.substr(0, equals)), Decode(field.substr(std::min(equals + 1, field.size()))));
  }
}

std::optional<std::string_view> FormFields::Find(std::string_view name, Case name_case) const {
  for (const auto& [own_name, value] : fields_) {
    if (name_case == Case::kExact ? own_name == name : SameIgnoringCase(own_name, name)) return value;
  }
  return std::nullopt;
}

}  // namespace orvalis::network
