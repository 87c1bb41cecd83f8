#pragma once

#include <cstdint>
#include <nlohmann/json_fwd.hpp>
#include <stdexcept>
#include <string>
#include <string_view>

#include "network/http/form_fields.h"
#include "network/http/http_message.h"

namespace orvalis::network {

/// What the members of Alpaca devices fail with. The client gets it inside an answer with status 200.
class AlpacaError : public std::runtime_error {
 public:
  enum Number : int {
    kNotImplemented = 0x400,        ///< the device does not have it, now or later
    kInvalidValue = 0x401,          ///< understood, but out of range
    kNotConnected = 0x407,          ///< this client has not connected
    kInvalidOperation = 0x40B,      ///< not possible now
    kActionNotImplemented = 0x40C,  ///< there are actions, but not this one
  };

  AlpacaError(Number number, const std::string& text) : std::runtime_error(text), number_(number) {}
  [[nodiscard]] Number number() const { return number_; }

 private:
  Number number_;
};

/// A call that is not understood: answered with status 400 and the text, and nothing was done.
class BadCall : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// One call with its parameters. A GET has them in the query, their names in any case; a PUT has them in the body,
/// their names exactly.
class AlpacaCall {
 public:
  /// Throws BadCall for an id that is none.
  explicit AlpacaCall(const HttpRequest& request);

  [[nodiscard]] std::uint32_t client() const { return client_; }            ///< 0 when it says none
  [[nodiscard]] std::uint32_t transaction() const { return transaction_; }  ///< likewise
  [[nodiscard]] const Peer& peer() const { return peer_; }

  // The parameter `name`. Each throws BadCall when it is missing or not of the type.
  [[nodiscard]] std::string_view Text(std::string_view name) const;
  [[nodiscard]] bool Boolean(std::string_view name) const;  ///< "true" or "false" in any case
  [[nodiscard]] double Number(std::string_view name) const;
  /// "" when it is missing.
  [[nodiscard]] std::string_view TextOrNothing(std::string_view name) const;

 private:
  [[nodiscard]] std::uint32_t Id(std::string_view name) const;

  FormFields fields_;
  FormFields::Case name_case_;
  Peer peer_;
  std::uint32_t client_ = 0;
  std::uint32_t transaction_ = 0;
};

/// `value` as an answer to `call`. It is left out when it is null: a PUT gives none.
[[nodiscard]] HttpResponse AlpacaAnswer(const AlpacaCall& call, std::uint32_t server_transaction,
                                        nlohmann::ordered_json value, int error_number = 0,
                                        const std::string& error_text = "");

}  // namespace orvalis::network
