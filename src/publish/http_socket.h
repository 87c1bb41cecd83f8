#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace orvalis {

/// A connection to a web server, for one exchange at a time. Never blocks.
class HttpSocket {
 public:
  struct Handlers {
    std::function<void()> connected;                       ///< the request is being sent
    std::function<void(std::string_view bytes)> received;  ///< a piece of the answer
    std::function<void()> closed;                          ///< the server closed the connection
    std::function<void(const std::string& reason)> failed;
  };

  virtual ~HttpSocket() = default;

  /// Looks up `host`, connects and sends `request`. No handler is called after `closed` or `failed`. Must not be called
  /// during another exchange.
  virtual void Begin(const std::string& host, std::uint16_t port, std::string request, Handlers handlers) = 0;
  /// Ends the exchange under way, if there is one; its handlers are not called again. May be called from a handler.
  virtual void Close() = 0;
};

}  // namespace orvalis
