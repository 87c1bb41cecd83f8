#include "network/http/http_parser.h"

#include <boost/beast/http/parser.hpp>
#include <boost/beast/http/string_body.hpp>
#include <optional>

namespace orvalis::network {
namespace {

namespace beast = boost::beast;
namespace http = boost::beast::http;

std::string_view View(beast::string_view text) { return {text.data(), text.size()}; }

int StatusOf(const beast::error_code& error) {
  if (error == http::error::header_limit) return kHeaderTooLarge;
  if (error == http::error::body_limit) return kContentTooLarge;
  if (error == http::error::bad_version) return kBadVersion;
  return kBadRequest;
}

Method MethodOf(http::verb verb) {
  switch (verb) {
    case http::verb::get:
      return Method::kGet;
    case http::verb::head:
      return Method::kHead;
    case http::verb::put:
      return Method::kPut;
    case http::verb::options:
      return Method::kOptions;
    default:
      return Method::kOther;
  }
}

}  // namespace

struct HttpParser::Beast {
  http::request_parser<http::string_body> parser;
};

HttpParser::HttpParser() { Reset(); }

HttpParser::~HttpParser() = default;

void HttpParser::Reset() {
  beast_ = std::make_unique<Beast>();
  // Counted here as well: the parser itself starts counting again after each field.
  beast_->parser.header_limit(kMostHeader);
  beast_->parser.body_limit(kMostBody);
  header_bytes_ = 0;
  body_bytes_ = 0;
  begun_ = false;
  continue_wanted_ = false;
  refusal_ = 0;
  headers_.clear();
  request_ = {};
}

bool HttpParser::complete() const { return refusal_ == 0 && beast_->parser.is_done(); }

bool HttpParser::keep_alive() const { return beast_->parser.keep_alive(); }

bool HttpParser::TakeContinue() { return std::exchange(continue_wanted_, false); }

std::size_t HttpParser::Feed(std::string_view bytes) {
  std::size_t used = 0;
  // Some clients end a body with a line break that its length does not count.
  while (!begun_ && used < bytes.size() && (bytes[used] == '\r' || bytes[used] == '\n')) ++used;
  auto& parser = beast_->parser;
  while (used < bytes.size() && !parser.is_done() && refusal_ == 0) {
    begun_ = true;
    const bool in_header = !parser.is_header_done();
    const std::string_view rest = bytes.substr(used);
    beast::error_code error;
    const std::size_t count = parser.put(boost::asio::const_buffer(rest.data(), rest.size()), error);
    const bool waits = error == http::error::need_more;
    used += count;
    (in_header ? header_bytes_ : body_bytes_) += count;
    const std::size_t held = waits ? rest.size() - count : 0;
    if (error && !waits) {
      refusal_ = StatusOf(error);
    } else if (in_header && header_bytes_ + held > kMostHeader) {
      refusal_ = kHeaderTooLarge;
    } else if (!in_header && body_bytes_ + held > kMostBody) {
      refusal_ = kContentTooLarge;
    } else if (in_header && parser.is_header_done()) {
      CheckHeader();
    }
    if (waits) break;
  }
  if (complete()) ReadRequest();
  return used;
}

void HttpParser::CheckHeader() {
  const auto& message = beast_->parser.get();
  // Two lengths, or a coding that this end does not know, and the two ends may disagree where the request ends.
  const auto coding = message.find(http::field::transfer_encoding);
  const bool has_coding = coding != message.end();
  if (message.count(http::field::content_length) > 1 || message.count(http::field::host) > 1) refusal_ = kBadRequest;
  const bool is_known = has_coding && beast_->parser.chunked() && SameIgnoringCase(View(coding->value()), "chunked");
  if (has_coding && !is_known) refusal_ = kNotImplemented;
  if (has_coding && message.version() < 11) refusal_ = kBadRequest;
  // A browser names the host in every request; only clients older than that rule may leave it out.
  if (message.version() >= 11 && message.count(http::field::host) == 0) refusal_ = kBadRequest;
  const auto expect = message.find(http::field::expect);
  if (expect == message.end() || refusal_ != 0) return;
  if (SameIgnoringCase(View(expect->value()), "100-continue")) {
    continue_wanted_ = !beast_->parser.is_done() && message.version() >= 11;
  } else {
    refusal_ = kExpectationFailed;
  }
}

void HttpParser::ReadRequest() {
  const auto& message = beast_->parser.get();
  for (const auto& field : message) headers_.push_back({View(field.name_string()), View(field.value())});
  request_.method = MethodOf(message.method());
  request_.method_name = View(message.method_string());
  request_.headers = headers_;
  request_.body = message.body();
  request_.authority = request_.Header("Host");
  std::string_view target = View(message.target());
  // The absolute form, as for a proxy: its host counts.
  constexpr std::string_view kScheme = "http://";
  if (SameIgnoringCase(target.substr(0, kScheme.size()), kScheme)) {
    target.remove_prefix(kScheme.size());
    const std::size_t end = std::min(target.find_first_of("/?"), target.size());
    request_.authority = target.substr(0, end);
    target.remove_prefix(end);
    if (target.empty()) target = "/";
  }
  const std::size_t mark = target.find('?');
  request_.path = target.substr(0, mark);
  if (mark != std::string_view::npos) request_.query = target.substr(mark + 1);
}

}  // namespace orvalis::network
