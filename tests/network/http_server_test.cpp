#include "network/http/http_server.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "base/run_time_error.h"
#include "network/http/event_channel.h"
#include "platform/qt/qt_sockets.h"
#include "tests/support/fake_event_loop.h"
#include "tests/support/raw_client.h"

namespace orvalis::network {
namespace {

using std::chrono::milliseconds;
using test::RawClient;

constexpr const char* kHost = "Host: dome.local\r\n\r\n";

/// The server on a real port of this machine; its time passes when the test says so.
class HttpServerTest : public testing::Test {
 protected:
  HttpServerTest() {
    resources_.Add({.path = "/echo",
                    .get = [](const HttpRequest& request) { return TextAnswer(kOk, std::string(request.query)); },
                    .put = [](const HttpRequest& request) { return TextAnswer(kOk, std::string(request.body)); },
                    .help = "says it again",
                    .shared = true});
    resources_.Add(
        {.path = "/large", .get = [](const HttpRequest&) { return TextAnswer(kOk, std::string(60'000, 'x')); }});
    resources_.Add({.path = "/fault", .get = [](const HttpRequest&) -> HttpResponse {
                      throw RunTimeError(RunTimeError::kOverflow, "too much");
                    }});
    resources_.Add({.path = "/page", .get = [](const HttpRequest&) -> HttpResponse {
                      return {.content_type = kHtmlType, .body = "<p>"};
                    }});
    resources_.Add({.path = "/stream", .get = [this](const HttpRequest&) -> HttpResponse {
                      return {.content_type = kEventStreamType, .body = ": begin\n\n", .events = &channel_};
                    }});
    while (!server_.open()) {
      try {
        server_.Open("127.0.0.1", port_,
                     {{{"Orvalis-Station", "Dome"}}, RequestGuard({"dome.local"}, "https://club.org")});
      } catch (const RunTimeError&) {
        ++port_;
      }
    }
  }

  /// One request on a connection of its own.
  std::string Ask(const std::string& request) { return RawClient(port_).Ask(request); }
  /// Time passes while the server works.
  void Pass(milliseconds time) {
    for (milliseconds left = time; left.count() > 0; left -= milliseconds(1'000)) {
      loop_.Advance(milliseconds(1'000));
      QCoreApplication::processEvents();
    }
  }
  static std::string Status(const std::string& answer) { return answer.substr(0, answer.find("\r\n")); }

  QtSockets sockets_;
  test::FakeEventLoop loop_;
  test::FakeClock clock_;
  Resources resources_;
  EventChannel channel_;
  std::vector<std::string> reports_;
  std::uint16_t port_ = 24'180;
  HttpServer server_{{.sockets = sockets_,
                      .loop = loop_,
                      .clock = clock_,
                      .resources = resources_,
                      .report = [this](const std::string& text) { reports_.push_back(text); }}};
};

struct RequestCase {
  const char* what;
  std::string request;
  const char* status;
};

TEST_F(HttpServerTest, AnswersOrRefusesEveryKindOfRequest) {
  const std::string host = kHost;
  const std::vector<RequestCase> cases{
      {"a query", "GET /echo?a=1 HTTP/1.1\r\n" + host, "200 OK"},
      {"the old protocol, without a host", "GET /echo HTTP/1.0\r\n\r\n", "200 OK"},
      {"as for a proxy", "GET http://dome.local:1/echo HTTP/1.1\r\n" + host, "200 OK"},
      {"a line break too many", "\r\n\r\nGET /echo HTTP/1.1\r\n" + host, "200 OK"},
      {"chunks", "PUT /echo HTTP/1.1\r\nTransfer-Encoding: chunked\r\n" + host + "3\r\na=1\r\n0\r\n\r\n", "200 OK"},
      {"what may be asked", "OPTIONS /echo HTTP/1.1\r\n" + host, "204 No Content"},
      {"no such thing", "GET /nothing HTTP/1.1\r\n" + host, "404 Not Found"},
      {"not to be written", "PUT /page HTTP/1.1\r\n" + host, "405 Method Not Allowed"},
      {"an unknown method", "BREW /echo HTTP/1.1\r\n" + host, "405 Method Not Allowed"},
      {"a fault", "GET /fault HTTP/1.1\r\n" + host, "500 Internal Server Error"},
      {"not HTTP", "\x16\x03\x01\x02\r\n\r\n", "400 Bad Request"},
      {"a NUL in the path", std::string("GET /ec\0ho HTTP/1.1\r\n", 21) + host, "400 Bad Request"},
      {"a NUL in a field", std::string("GET /echo HTTP/1.1\r\nA: \0\r\n", 26) + host, "400 Bad Request"},
      {"no host", "GET /echo HTTP/1.1\r\n\r\n", "400 Bad Request"},
      {"two hosts", "GET /echo HTTP/1.1\r\nHost: evil.org\r\n" + host, "400 Bad Request"},
      {"two lengths", "PUT /echo HTTP/1.1\r\nContent-Length: 1\r\nContent-Length: 1\r\n" + host + "a",
       "400 Bad Request"},
      {"two different lengths", "PUT /echo HTTP/1.1\r\nContent-Length: 1, 2\r\n" + host + "ab", "400 Bad Request"},
      {"length and chunks", "PUT /echo HTTP/1.1\r\nContent-Length: 3\r\nTransfer-Encoding: chunked\r\n" + host,
       "400 Bad Request"},
      {"a broken chunk", "PUT /echo HTTP/1.1\r\nTransfer-Encoding: chunked\r\n" + host + "xyz\r\n", "400 Bad Request"},
      {"an unknown coding", "PUT /echo HTTP/1.1\r\nTransfer-Encoding: gzip\r\n" + host, "501 Not Implemented"},
      {"two codings", "PUT /echo HTTP/1.1\r\nTransfer-Encoding: gzip, chunked\r\n" + host + "0\r\n\r\n",
       "501 Not Implemented"},
      {"an unknown expectation", "PUT /echo HTTP/1.1\r\nExpect: luck\r\nContent-Length: 1\r\n" + host,
       "417 Expectation Failed"},
      {"another protocol", "PRI * HTTP/2.0\r\n\r\nSM\r\n\r\n", "505 HTTP Version Not Supported"},
      {"an endless line", "GET /" + std::string(9'000, 'a'), "431 Request Header Fields Too Large"},
      {"a large body", "PUT /echo HTTP/1.1\r\nContent-Length: 65537\r\n" + host, "413 Content Too Large"},
      {"a large chunk",
       "PUT /echo HTTP/1.1\r\nTransfer-Encoding: chunked\r\n" + host + "fffff\r\n" + std::string(66'000, 'a'),
       "413 Content Too Large"},
      {"another name", "GET /echo HTTP/1.1\r\nHost: rebound.evil.org:1\r\n\r\n", "421 Misdirected Request"},
      {"nearly an address", "GET /echo HTTP/1.1\r\nHost: 127.0.0.1.evil.org\r\n\r\n", "421 Misdirected Request"},
      {"an IPv6 address", "GET /echo HTTP/1.1\r\nHost: [fe80::1]:11111\r\n\r\n", "200 OK"},
      {"this machine", "GET /echo HTTP/1.1\r\nHost: LocalHost\r\n\r\n", "200 OK"},
      {"a page of another site", "GET /page HTTP/1.1\r\nOrigin: https://evil.org\r\n" + host, "403 Forbidden"},
      {"a page without a name", "GET /echo HTTP/1.1\r\nOrigin: null\r\n" + host, "403 Forbidden"},
      {"embedded in another site", "GET /page HTTP/1.1\r\nSec-Fetch-Site: cross-site\r\n" + host, "403 Forbidden"},
      {"a link from another site",
       "GET /page HTTP/1.1\r\nSec-Fetch-Site: cross-site\r\nSec-Fetch-Mode: navigate\r\n" + host, "200 OK"},
      {"a page of its own", "PUT /echo HTTP/1.1\r\nOrigin: http://dome.local\r\n" + host, "200 OK"},
      {"the page that may read", "GET /echo HTTP/1.1\r\nOrigin: https://club.org\r\n" + host, "200 OK"},
      {"but not write", "PUT /echo HTTP/1.1\r\nOrigin: https://club.org\r\n" + host, "403 Forbidden"},
      {"nor read the rest", "GET /page HTTP/1.1\r\nOrigin: https://club.org\r\n" + host, "403 Forbidden"},
  };
  for (const RequestCase& row : cases) {
    SCOPED_TRACE(row.what);
    const std::string answer = Ask(row.request);
    EXPECT_EQ(Status(answer), std::string("HTTP/1.1 ") + row.status);
    EXPECT_NE(answer.find("Cache-Control: no-store\r\n"), std::string::npos);
    EXPECT_NE(answer.find("Orvalis-Station: Dome\r\n"), std::string::npos);
    EXPECT_EQ(answer.find("Access-Control-Allow-Origin: https://club.org\r\n") != std::string::npos,
              std::string(row.what) == "the page that may read");
    EXPECT_EQ(answer.find("frame-ancestors 'none'") != std::string::npos, answer.ends_with("<p>"));
  }
  // All of them in one line, and nothing in it that a peer chose; a fault of ours by itself.
  ASSERT_EQ(reports_.size(), 2U);
  EXPECT_EQ(reports_[0], "A request from 127.0.0.1 was refused: it failed: too much");
  EXPECT_EQ(reports_[1], "A request from 127.0.0.1 was refused: it is not valid HTTP");
}

TEST_F(HttpServerTest, EndsAHeaderThatComesInEndlessPieces) {
  // Each field is small and complete: only their sum is too large.
  RawClient client(port_);
  client.Send("GET /echo HTTP/1.1\r\n");
  for (int i = 0; i < 400; ++i) {
    client.Send("A: 0123456789012345678\r\n");
    QCoreApplication::processEvents();
  }
  EXPECT_EQ(Status(client.Answer()), "HTTP/1.1 431 Request Header Fields Too Large");
}

TEST_F(HttpServerTest, KeepsAConnectionForFurtherRequestsAndAnswersInTheirOrder) {
  RawClient client(port_);
  client.Send("GET /echo?1 HTTP/1.1\r\n" + std::string(kHost) + "HEAD /echo?2 HTTP/1.1\r\n" + kHost +
              "PUT /echo HTTP/1.1\r\n");
  EXPECT_TRUE(client.Answer().ends_with("Connection: keep-alive\r\n\r\n1\n"));
  // The head alone, with the length of what GET gives.
  ASSERT_TRUE(test::RunUntil([&] { return client.received().endsWith("\r\n\r\n"); }));
  EXPECT_TRUE(client.received().contains("Content-Length: 2\r\n"));
  RawClient other(port_);
  other.Send("PUT /echo HTTP/1.1\r\nConnection: close\r\nExpect: 100-continue\r\nContent-Length: 3\r\n" +
             std::string(kHost));
  EXPECT_EQ(other.Answer(), "HTTP/1.1 100 Continue\r\n\r\n");
  EXPECT_TRUE(other.Ask("abc").ends_with("abc\n"));
  EXPECT_TRUE(other.WaitForEnd());
}

TEST_F(HttpServerTest, HoldsUpAClientThatAsksWithoutReading) {
  RawClient client(port_);
  client.SetReading(false);
  const std::string request = "GET /large HTTP/1.1\r\n" + std::string(kHost);
  std::string requests;
  for (int i = 0; i < 200; ++i) requests += request;
  client.Send(requests);
  for (int i = 0; i < 50; ++i) QCoreApplication::processEvents(QEventLoop::AllEvents, 10);
  // 12 MB of answers: the server goes on only as they are fetched, and all of them arrive.
  client.SetReading(true);
  qsizetype fetched = 0;
  for (int i = 0; i < 200; ++i) fetched += static_cast<qsizetype>(client.Answer().size());
  EXPECT_GT(fetched, 200 * 60'001);
  EXPECT_TRUE(client.received().isEmpty());
}

TEST_F(HttpServerTest, GivesARequestTenSecondsAndAnIdleConnectionAMinute) {
  RawClient silent(port_);
  RawClient slow(port_);
  RawClient served(port_);
  slow.Send("PUT /echo HTTP/1.1\r\nContent-Length: 9\r\n" + std::string(kHost) + "a");
  EXPECT_EQ(Status(served.Ask("GET /echo HTTP/1.1\r\n" + std::string(kHost))), "HTTP/1.1 200 OK");
  Pass(milliseconds(9'000));
  EXPECT_FALSE(silent.Ended() || slow.Ended() || served.Ended());
  Pass(milliseconds(3'000));
  EXPECT_EQ(Status(slow.Answer()), "HTTP/1.1 408 Request Timeout");
  EXPECT_TRUE(silent.WaitForEnd());
  EXPECT_TRUE(slow.WaitForEnd());
  Pass(milliseconds(45'000));
  EXPECT_FALSE(served.Ended());
  Pass(milliseconds(5'000));
  EXPECT_TRUE(served.WaitForEnd());
}

TEST_F(HttpServerTest, RefusesMoreConnectionsThanItServes) {
  std::vector<std::unique_ptr<RawClient>> clients;
  for (int i = 0; i < kMostConnections; ++i) clients.push_back(std::make_unique<RawClient>(port_));
  RawClient extra(port_);
  EXPECT_EQ(Status(extra.Answer()), "HTTP/1.1 503 Service Unavailable");
  // One that leaves makes room.
  clients.pop_back();
  ASSERT_TRUE(test::RunUntil([&] {
    loop_.Advance(milliseconds(0));
    return Status(Ask("GET /echo HTTP/1.1\r\n" + std::string(kHost))) == "HTTP/1.1 200 OK";
  }));
  EXPECT_EQ(reports_.size(), 1U);
  // Those that are only open give way, one to one.
  const std::string request = "GET /echo HTTP/1.1\r\n" + std::string(kHost);
  loop_.Advance(milliseconds(1'000));
  clients[1]->Ask(request);
  RawClient asks(port_);
  RawClient late(port_);
  EXPECT_EQ(Status(asks.Ask(request)) + Status(late.Ask(request)), "HTTP/1.1 200 OKHTTP/1.1 200 OK");
  loop_.Advance(milliseconds(0));
  EXPECT_TRUE(clients[0]->WaitForEnd());
  EXPECT_FALSE(clients[1]->Ended());
}

TEST_F(HttpServerTest, SendsEventsToReadersAndDropsOneThatDoesNotKeepUp) {
  const std::string request = "GET /stream HTTP/1.1\r\n" + std::string(kHost);
  RawClient reader(port_);
  reader.Send(request);
  ASSERT_TRUE(test::RunUntil([&] { return reader.received().endsWith(": begin\n\n"); }));
  channel_.Publish("{\"a\":1}\nb");
  EXPECT_TRUE(test::RunUntil([&] { return reader.received().endsWith("data: {\"a\":1}\ndata: b\n\n"); }));
  RawClient asleep(port_);
  asleep.SetReading(false);
  asleep.Send(request);
  // It ends when its buffers are full, the system's included; the other one goes on.
  const std::string event(8'000, 'x');
  qsizetype published = 0;
  ASSERT_TRUE(test::RunUntil([&] {
    channel_.Publish(event);
    ++published;
    QCoreApplication::processEvents();
    return !reports_.empty();
  }));
  EXPECT_EQ(reports_,
            std::vector<std::string>{"A request from 127.0.0.1 was refused: it does not read its stream of events"});
  EXPECT_TRUE(test::RunUntil([&] { return reader.received().size() > published * 8'000; }));
  EXPECT_FALSE(reader.Ended());
}

TEST_F(HttpServerTest, LeavesAPortToTheProgramThatHasIt) {
  HttpServer second(
      {.sockets = sockets_, .loop = loop_, .clock = clock_, .resources = resources_, .report = [](const auto&) {}});
  try {
    second.Open("127.0.0.1", port_, {{}, RequestGuard({}, "")});
    FAIL() << "two listen on one port";
  } catch (const RunTimeError& error) {
    EXPECT_EQ(error.number(), RunTimeError::kPortInUse);
  }
  server_.Close();
  EXPECT_NO_THROW(second.Open("127.0.0.1", port_, {{}, RequestGuard({}, "")}));
}

}  // namespace
}  // namespace orvalis::network
