// Calls of Alpaca clients, one a line: "GET path?parameters", "PUT path?parameters". Other lines: "!" makes it safe or
// unsafe, "+" lets half an hour pass, "?" is a question to the discovery.
#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <string>

#include "network/alpaca/alpaca_server.h"
#include "network/alpaca/discovery.h"
#include "tests/fuzz/fuzz.h"

namespace orvalis::network {
namespace {

using fuzz::Require;

class Server {
 public:
  Server() {
    alpaca_.AddTo(resources_);
    alpaca_.SetStation({.name = "Dome", .uuid = "a6", .observing_conditions_id = "b7", .safety_monitor_id = "c8"});
    now_.age = std::chrono::milliseconds(700);
    now_.words.rain = "Dry";
    now_.values.sky_c = -20.5;
  }

  void Do(std::string_view line, std::uint8_t client) {
    if (line.starts_with('!')) {
      now_.verdict.safe = !now_.verdict.safe;
      alpaca_.Note(now_);
    } else if (line.starts_with('+')) {
      tick_ += 1'800'000;
    } else if (line.starts_with('?')) {
      Ask(line.substr(1), client);
    } else {
      Call(line, client);
    }
  }

 private:
  void Ask(std::string_view bytes, std::uint8_t client) {
    const std::string answer = discovery_.Answer({.bytes = bytes, .peer = PeerOf(client)}, tick_);
    Require(answer.empty() || bytes.starts_with("alpacadiscovery"), "only the question is answered", bytes);
    Require(answer.empty() || answer == "{\"AlpacaPort\":11111}", "the answer is the port", answer);
  }

  void Call(std::string_view line, std::uint8_t client) {
    HttpRequest request;
    request.peer = PeerOf(client);
    request.method = line.starts_with("GET ") ? Method::kGet : line.starts_with("PUT ") ? Method::kPut : Method::kOther;
    line.remove_prefix(std::min<std::size_t>(4, line.size()));
    request.path = line.substr(0, line.find('?'));
    const std::string_view parameters = line.substr(std::min(request.path.size() + 1, line.size()));
    (request.method == Method::kPut ? request.body : request.query) = parameters;
    const HttpResponse response = resources_.Answer(request);
    if (response.status != kOk || response.content_type != kJsonType) {
      Require(response.status == kOk || response.status >= 400, "a call is answered or refused", line);
      return;
    }
    Check(request, nlohmann::json::parse(response.body));
  }

  void Check(const HttpRequest& request, const nlohmann::json& answer) {
    constexpr std::array kErrors{0, 0x400, 0x401, 0x407, 0x40B, 0x40C};
    const int error = answer.at("ErrorNumber");
    Require(std::ranges::find(kErrors, error) != kErrors.end(), "an error is one of Alpaca's", std::to_string(error));
    Require((error == 0) == answer.at("ErrorMessage").get<std::string>().empty(), "an error says why");
    Require(answer.at("ClientTransactionID").is_number_unsigned(), "a transaction is a whole number");
    const std::uint32_t transaction = answer.at("ServerTransactionID");
    Require(transaction == last_transaction_ + 1, "our transactions are counted");
    last_transaction_ = transaction;
    Require(request.method != Method::kGet || answer.contains("Value"), "what is read has a value", request.path);
    if (!request.path.ends_with("/issafe")) return;
    Require(error == 0 && answer.at("Value") == nlohmann::json(now_.verdict.safe), "the verdict is the one of now");
  }

  static Peer PeerOf(std::uint8_t client) {
    return {.address = "192.0.2." + std::to_string(client), .loopback = client == 0};
  }

  std::int64_t tick_ = 0;
  Observation now_;
  AlpacaServer alpaca_{{.observe = [this]() -> const Observation& { return now_; }, .tick = [this] { return tick_; }}};
  AlpacaDiscovery discovery_{11'111};
  Resources resources_;
  std::uint32_t last_transaction_ = 0;
};

}  // namespace
}  // namespace orvalis::network

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  orvalis::fuzz::Input input(data, size);
  orvalis::network::Server server;
  const std::uint8_t clients = input.Byte();
  for (unsigned i = 0; !input.empty(); ++i) {
    server.Do(input.Until('\n'), static_cast<std::uint8_t>(clients != 0 ? i % clients : 0));
  }
  return 0;
}
