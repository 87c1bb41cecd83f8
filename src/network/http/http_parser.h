#pragma once

#include <cstddef>
#include <memory>
#include <string_view>

#include "network/http/http_message.h"

namespace orvalis::network {

/// The most that a request may hold, in bytes.
inline constexpr std::size_t kMostHeader = 8'192;
inline constexpr std::size_t kMostBody = 65'536;  ///< as sent, chunk framing included

/// Takes one HTTP/1.0 or 1.1 request from the bytes of a connection.
class HttpParser {
 public:
  HttpParser();
  HttpParser(const HttpParser&) = delete;
  HttpParser& operator=(const HttpParser&) = delete;
  ~HttpParser();

  /// Parses what it can of `bytes` and returns how many it used. The rest has to come again, with what follows it,
  /// unless the request is complete or was refused.
  [[nodiscard]] std::size_t Feed(std::string_view bytes);

  /// A request has begun.
  [[nodiscard]] bool begun() const { return begun_; }
  [[nodiscard]] bool complete() const;
  /// The status to refuse the request with; 0 while nothing is wrong with it.
  [[nodiscard]] int refusal() const { return refusal_; }
  /// Whether the client waits for a go-ahead before it sends the body. True once a request.
  [[nodiscard]] bool TakeContinue();

  /// The complete request, without its peer. Valid until `Reset`.
  [[nodiscard]] const HttpRequest& request() const { return request_; }
  /// Whether the client wants to send another request on the same connection.
  [[nodiscard]] bool keep_alive() const;

  /// Begins with the next request.
  void Reset();

 private:
  struct Beast;  // its headers are slow to compile

  /// The header is complete: refuses what the body could not be told from, or what the program does not do.
  void CheckHeader();
  void ReadRequest();

  std::unique_ptr<Beast> beast_;
  std::size_t header_bytes_ = 0;
  std::size_t body_bytes_ = 0;
  bool begun_ = false;
  bool continue_wanted_ = false;
  int refusal_ = 0;
  std::vector<HeaderField> headers_;
  HttpRequest request_;
};

}  // namespace orvalis::network
