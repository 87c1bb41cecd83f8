// The peer of the HTTP front: a server that does nothing but answer each request with the same text, on the library
// that the front takes its protocol from, in one thread. It prints its port.

#include <boost/asio/ip/tcp.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/core/tcp_stream.hpp>
#include <boost/beast/http.hpp>
#include <cstdio>
#include <memory>
#include <utility>

namespace {

namespace asio = boost::asio;
namespace beast = boost::beast;
namespace http = boost::beast::http;
using asio::ip::tcp;

class Session : public std::enable_shared_from_this<Session> {
 public:
  explicit Session(tcp::socket socket) : stream_(std::move(socket)) {
    answer_.set(http::field::content_type, "application/json");
    answer_.body() =
        R"({"Value":false,"ClientTransactionID":0,"ServerTransactionID":1,"ErrorNumber":0,"ErrorMessage":""})";
    answer_.prepare_payload();
  }

  void Read() {
    request_ = {};
    http::async_read(stream_, buffer_, request_, [self = shared_from_this()](beast::error_code error, std::size_t) {
      if (!error) self->Write();
    });
  }

 private:
  void Write() {
    http::async_write(stream_, answer_, [self = shared_from_this()](beast::error_code error, std::size_t) {
      if (!error) self->Read();
    });
  }

  beast::tcp_stream stream_;
  beast::flat_buffer buffer_;
  http::request<http::string_body> request_;
  http::response<http::string_body> answer_{http::status::ok, 11};
};

void Accept(tcp::acceptor& acceptor) {
  acceptor.async_accept([&acceptor](beast::error_code error, tcp::socket socket) {
    if (!error) std::make_shared<Session>(std::move(socket))->Read();
    Accept(acceptor);
  });
}

}  // namespace

int main() {
  asio::io_context context(1);
  tcp::acceptor acceptor(context, {asio::ip::address_v4::loopback(), 0});
  std::printf("%u\n", acceptor.local_endpoint().port());
  std::fflush(stdout);
  Accept(acceptor);
  context.run();
}
