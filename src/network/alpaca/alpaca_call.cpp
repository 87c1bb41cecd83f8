#include "network/alpaca/alpaca_call.h"

#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <utility>

namespace orvalis::network {
namespace {

/// The whole of `text` as a number.
template <typename Number>
bool Parse(std::string_view text, Number& number) {
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  return error == std::errc() && end == text.data() + text.size();
}

std::string Quoted(std::string_view name) { return "\"" + std::string(name) + "\""; }

}  // namespace

AlpacaCall::AlpacaCall(const HttpRequest& request)
    : fields_(request.method == Method::kPut ? request.body : request.query),
      name_case_(request.method == Method::kPut ? FormFields::Case::kExact : FormFields::Case::kIgnored),
      peer_(request.peer),
      client_(Id("ClientID")),
      transaction_(Id("ClientTransactionID")) {}

std::uint32_t AlpacaCall::Id(std::string_view name) const {
  const auto text = fields_.Find(name, name_case_);
  if (!text) return 0;
  std::uint32_t id = 0;
  if (!Parse(*text, id)) throw BadCall(Quoted(name) + " is not a whole number from 0 to 4294967295");
  return id;
}

std::string_view AlpacaCall::Text(std::string_view name) const {
  const auto text = fields_.Find(name, name_case_);
  if (!text) throw BadCall("The parameter " + Quoted(name) + " is missing");
  return *text;
}

std::string_view AlpacaCall::TextOrNothing(std::string_view name) const {
  return fields_.Find(name, name_case_).value_or("");
}

bool AlpacaCall::Boolean(std::string_view name) const {
  const std::string_view text = Text(name);
  if (SameIgnoringCase(text, "true")) return true;
  if (SameIgnoringCase(text, "false")) return false;
  throw BadCall("The parameter " + Quoted(name) + " is neither True nor False");
}

double AlpacaCall::Number(std::string_view name) const {
  double number = 0;
  if (!Parse(Text(name), number) || !std::isfinite(number)) {
    throw BadCall("The parameter " + Quoted(name) + " is not a number");
  }
  return number;
}

HttpResponse AlpacaAnswer(const AlpacaCall& call, std::uint32_t server_transaction, nlohmann::ordered_json value,
                          int error_number, const std::string& error_text) {
  nlohmann::ordered_json answer;
  if (!value.is_null()) answer["Value"] = std::move(value);
  answer["ClientTransactionID"] = call.transaction();
  answer["ServerTransactionID"] = server_transaction;
  answer["ErrorNumber"] = error_number;
  answer["ErrorMessage"] = error_text;
  return {.content_type = kJsonType,
          .body = answer.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace)};
}

}  // namespace orvalis::network
