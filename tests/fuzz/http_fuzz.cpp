// The HTTP front, from the bytes of a connection to the answers: in random pieces, with a peer that fetches slowly, the
// same answers as at once. In the input the byte 1 and a number n stand for so many times 64 of the byte before.
#include <functional>
#include <memory>
#include <optional>
#include <random>
#include <string>

#include "network/http/http_server.h"
#include "network/readings.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/fake_event_loop.h"

namespace orvalis::network {
namespace {

using fuzz::Require;

/// The peer's end of a connection.
struct Line {
  StreamSocket::User* user = nullptr;
  std::string answers;
  std::size_t fetched = 0;
  bool fetches = true;  ///< at once
  bool reading = true;
  bool closed = false;
};

class LineSocket : public StreamSocket {
 public:
  explicit LineSocket(Line& line) : line_(line) {}
  [[nodiscard]] const Peer& peer() const override { return peer_; }
  void Use(User& user) override { line_.user = &user; }
  void Send(std::string_view bytes) override {
    Require(!line_.closed, "nothing is sent after the end");
    line_.answers += bytes;
    if (line_.fetches) line_.fetched = line_.answers.size();
  }
  [[nodiscard]] std::size_t unsent() const override { return line_.answers.size() - line_.fetched; }
  void SetReading(bool reading) override { line_.reading = reading; }
  void KeepLittleUnsent() override {}
  void Close() override { line_.closed = true; }

 private:
  Peer peer_{.address = "192.0.2.7"};
  Line& line_;
};

class OneSocket : public Sockets {
 public:
  std::unique_ptr<Listener> Listen(const std::string&, std::uint16_t, Accept accept) override {
    accept_ = std::move(accept);
    return std::make_unique<Listener>();
  }
  std::unique_ptr<DatagramListener> AnswerDatagrams(const SharedPort&, Answer) override { return nullptr; }
  [[nodiscard]] std::string MachineName() const override { return "dome"; }
  [[nodiscard]] std::vector<std::string> MachineAddresses() const override { return {}; }
  void Connect(Line& line) { accept_(std::make_unique<LineSocket>(line)); }

 private:
  Accept accept_;
};

/// Whether `authority` has letters and is none of our names: told apart without the program's own parser.
bool IsForeignName(std::string_view authority) {
  std::string host(authority.substr(0, authority.find(':')));
  for (char& c : host) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c;
  if (host.ends_with('.')) host.pop_back();
  const bool has_letters = host.find_first_of("abcdefghijklmnopqrstuvwxyz") != std::string::npos;
  return has_letters && !host.starts_with('[') && host != "dome" && host != "localhost";
}

class Server {
 public:
  Server() {
    readings_.AddTo(resources_);
    resources_.Add({.path = "/echo",
                    .get = [](const HttpRequest& request) { return TextAnswer(kOk, std::string(request.query)); },
                    .put = [](const HttpRequest& request) { return TextAnswer(kOk, std::string(request.body)); },
                    .shared = true});
    resources_.Add(
        {.path = "/large", .get = [](const HttpRequest&) { return TextAnswer(kOk, std::string(30'000, 'x')); }});
    server_.Open("", 1, {{}, RequestGuard({"dome"}, "https://club.org")});
    sockets_.Connect(line_);
  }

  /// The answers to `bytes`, which come in pieces of up to `piece` bytes.
  std::string Serve(std::string_view bytes, std::size_t piece, bool slow, std::uint8_t seed) {
    std::minstd_rand random(seed + 1U);
    line_.fetches = !slow;
    while (!bytes.empty() && !line_.closed) {
      if (!line_.reading) Fetch();
      Require(line_.reading, "a peer that fetches is read again");
      const std::size_t count = std::min<std::size_t>(bytes.size(), 1 + random() % piece);
      received_ += bytes.substr(0, count);
      line_.user->Received(bytes.substr(0, count));
      bytes.remove_prefix(count);
      Check();
    }
    Fetch();
    return line_.answers;
  }
  [[nodiscard]] int requests() const { return requests_; }

 private:
  void Fetch() {
    line_.fetched = line_.answers.size();
    if (!line_.closed) line_.user->Sent();
    line_.fetched = line_.answers.size();
  }

  void Check() {
    const std::string& answers = line_.answers;
    Require(answers.empty() || answers.starts_with("HTTP/1.1 "), "what is sent is an answer", answers);
    const std::size_t unsent = answers.size() - line_.fetched;
    Require(unsent <= 2 * kMostUnsent, "little is kept for a slow peer");
    const std::size_t begin = received_.find_first_not_of("\r\n");
    if (begin == std::string::npos) {
      Require(answers.empty(), "line breaks are no request", answers);
      return;
    }
    if (whole_) return;
    whole_ = received_.find("\r\n\r\n", std::max(begin, searched_)) != std::string::npos;
    searched_ = received_.size() - std::min<std::size_t>(received_.size(), 3);
    if (whole_) return;
    Require(requests_ == 0, "nothing is done before a header is whole", received_);
    Require(answers.empty() || answers.starts_with("HTTP/1.1 4") || answers.starts_with("HTTP/1.1 5"),
            "half a request is refused or has to wait", answers);
    Require(!answers.empty() || received_.size() - begin <= kMostHeader, "a header without an end is refused");
  }

  void Answered(const HttpRequest& request, int status) {
    ++requests_;
    Require(!IsForeignName(request.authority) || status == kMisdirectedRequest, "only our own names are answered",
            request.authority);
    Require(request.body.size() <= kMostBody, "a body is bounded");
    Require(request.method != Method::kOther || status >= 400, "what is not known is refused", request.method_name);
    // What was handed over has been received, at least before its chunks were put together.
    Require(received_.find(request.path) != std::string::npos, "a path is from the request", request.path);
    std::size_t header = 0;
    for (const HeaderField& field : request.headers) header += field.name.size() + field.value.size();
    Require(header <= kMostHeader, "a header is bounded");
  }

  OneSocket sockets_;
  test::FakeEventLoop loop_;
  test::FakeClock clock_;
  Station station_{.name = "Dome", .uuid = "a6a39676", .observing_conditions_id = "", .safety_monitor_id = ""};
  Observation now_;
  Resources resources_;
  Readings readings_{{.observe = [this]() -> const Observation& { return now_; },
                      .tick = [] { return std::int64_t{0}; },
                      .station = station_,
                      .counters = [] { return MetricCounters{}; }}};
  std::string received_;
  std::size_t searched_ = 0;  ///< for the end of a header
  bool whole_ = false;        ///< there is one
  int requests_ = 0;
  Line line_;
  HttpServer server_{{.sockets = sockets_,
                      .loop = loop_,
                      .clock = clock_,
                      .resources = resources_,
                      .report = [](const std::string&) {},
                      .answered = [this](const HttpRequest& request, int status,
                                         std::chrono::microseconds) { Answered(request, status); }}};
};

/// `answers` without what depends on the pieces: a go-ahead, and for which of its faults the last request is refused.
std::string WhatCounts(std::string answers) {
  constexpr std::string_view kGoAhead = "HTTP/1.1 100 Continue\r\n\r\n";
  for (std::size_t at = 0; (at = answers.find(kGoAhead, at)) != std::string::npos;) answers.erase(at, kGoAhead.size());
  const std::size_t body = answers.rfind("\r\n\r\n");
  const bool refused = body != std::string::npos && answers.compare(body + 4, 9, "Refused: ") == 0;
  return refused ? answers.substr(0, answers.rfind("HTTP/1.1 ")) : answers;
}

std::string Expanded(std::string_view text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool repeats = text[i] == 1 && i + 1 < text.size() && i > 0;
    if (repeats) {
      ++i;
      if (bytes.size() < 100'000) bytes.append(std::size_t{64} * static_cast<unsigned char>(text[i]), text[i - 2]);
    } else {
      bytes += text[i];
    }
  }
  return bytes;
}

}  // namespace
}  // namespace orvalis::network

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvalis;
  fuzz::Input input(data, size);
  const std::uint8_t seed = input.Byte();
  const std::string bytes = network::Expanded(input.Rest());
  network::Server at_once;
  const std::string expected = at_once.Serve(bytes, 1'000'000, false, seed);
  network::Server in_pieces;
  const std::string answers = in_pieces.Serve(bytes, 1U << seed % 12U, seed % 2 == 1, seed);
  fuzz::Require(at_once.requests() == in_pieces.requests(), "pieces are the same requests", answers);
  fuzz::Require(network::WhatCounts(expected) == network::WhatCounts(answers), "pieces are answered as the whole is",
                answers);
  return 0;
}
