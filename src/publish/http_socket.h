#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace orvalis {

/// A connection to a web server, for one exchange at a time. Nothing in it waits.
class HttpSocket {
 public:
  struct Handlers {
    std::function<void()> connected;                       ///< the request is on its way
    std::function<void(std::string_view bytes)> received;  ///< a piece of the answer
    std::function<void()> closed;                          ///< the server has said all that it says
    std::function<void(const std::string& reason)> failed;
  };

  virtual ~HttpSocket() = default;

  /// Looks up `host`, connects and sends `request`. After `closed` or `failed` nothing more is called. Not while
  /// another exchange is under way.
  virtual void Begin(const std::string& host, std::uint16_t port, std::string request, Handlers handlers) = 0;
  /// Ends the exchange under way, if there is one; its handlers are called no more. Also from inside a handler.
  virtual void Close() = 0;
};

}  // namespace orvalis
