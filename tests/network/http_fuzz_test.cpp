#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

#include "network/http/http_connection.h"

namespace orvalis::network {
namespace {

using Random = std::mt19937;

class MemorySocket : public StreamSocket {
 public:
  MemorySocket(User*& user, std::string& sent) : user_(user), sent_(sent) {}
  [[nodiscard]] const Peer& peer() const override { return peer_; }
  void Use(User& user) override { user_ = &user; }
  void Send(std::string_view bytes) override { sent_ += bytes; }
  [[nodiscard]] std::size_t unsent() const override { return 0; }
  void SetReading(bool /*reading*/) override {}
  void KeepLittleUnsent() override {}
  void Close() override { user_->Closed(); }

 private:
  Peer peer_;
  User*& user_;
  std::string& sent_;
};

/// Answers with what it understood.
class Understanding : public HttpConnection::Owner {
 public:
  HttpResponse Answer(const HttpRequest& request) override {
    std::string text = std::to_string(static_cast<int>(request.method));
    for (const std::string_view part : {request.authority, request.path, request.query, request.body}) {
      text.append(" [").append(part).append("]");
    }
    understood.push_back(text);
    return TextAnswer(kOk, "");
  }
  std::string_view CommonFields() override { return ""; }
  [[nodiscard]] std::int64_t Now() const override { return 0; }
  void NoteRefusal(const Peer& /*peer*/, const std::string& /*reason*/) override { ++refusals; }
  void ConnectionOver() override {}

  std::vector<std::string> understood;
  int refusals = 0;
};

/// What a connection makes of `bytes`, which come in pieces of up to `piece` bytes; 0 for all at once.
Understanding Understand(const std::string& bytes, std::size_t piece, Random& random) {
  Understanding owner;
  StreamSocket::User* user = nullptr;
  std::string sent;
  HttpConnection connection(std::make_unique<MemorySocket>(user, sent), owner);
  connection.Start();
  for (std::size_t at = 0; at < bytes.size() && !connection.over();) {
    const std::size_t count = piece == 0 ? bytes.size() : std::min(bytes.size() - at, 1 + random() % piece);
    user->Received(std::string_view(bytes).substr(at, count));
    at += count;
  }
  // Whatever was sent is an answer of ours.
  EXPECT_TRUE(sent.empty() || sent.starts_with("HTTP/1.1 ")) << sent;
  return owner;
}

std::string Mutated(std::string bytes, Random& random) {
  static const std::array<std::string, 12> tokens{
      "\r\n", "\r\n\r\n", std::string(1, '\0'), "Content-Length: 5\r\n", "Transfer-Encoding: chunked\r\n", "0\r\n\r\n",
      " ",    ":",        "ffffffffffffffff",   "GET / HTTP/1.1\r\n",    std::string(8'200, 'A'),          ";a=\"\\\""};
  for (auto changes = random() % 4; changes > 0 && !bytes.empty(); --changes) {
    const std::size_t at = random() % bytes.size();
    switch (random() % 4) {
      case 0:
        bytes[at] = static_cast<char>(random());
        break;
      case 1:
        bytes.erase(at, 1 + random() % 8);
        break;
      case 2:
        bytes.insert(at, bytes.substr(random() % bytes.size(), random() % 64));
        break;
      default:
        bytes.insert(at, tokens[random() % tokens.size()]);
    }
  }
  return bytes;
}

TEST(HttpFuzz, UnderstandsTheSameHoweverTheBytesArrive) {
  const std::array<std::string, 5> requests{
      "GET /a?b=1 HTTP/1.1\r\nHost: a\r\nAccept: */*\r\n\r\n",
      "PUT /c HTTP/1.1\r\nHost: a\r\nContent-Length: 7\r\n\r\nAction=",
      "PUT /d HTTP/1.1\r\nHost: a\r\nTransfer-Encoding: chunked\r\n\r\n4;x=y\r\nabcd\r\n3\r\nefg\r\n0\r\nTrail: "
      "er\r\n\r\n",
      "PUT /e HTTP/1.1\r\nHost: a\r\nExpect: 100-continue\r\nContent-Length: 2\r\n\r\nab",
      "GET http://b/f HTTP/1.0\r\nConnection: keep-alive\r\n\r\n"};
  Random random(20'261'122);  // the same in every run
  for (int i = 0; i < 20'000; ++i) {
    std::string bytes;
    for (auto count = 1 + random() % 3; count > 0; --count)
      bytes += Mutated(requests[random() % requests.size()], random);
    const Understanding whole = Understand(bytes, 0, random);
    const Understanding pieces = Understand(bytes, 1 + random() % 40, random);
    ASSERT_EQ(whole.understood, pieces.understood) << bytes;
    // One that waits for its end may be refused later.
    ASSERT_LE(pieces.refusals, whole.refusals) << bytes;
  }
}

}  // namespace
}  // namespace orvalis::network
