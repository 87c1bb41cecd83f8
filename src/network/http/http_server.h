#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/clock.h"
#include "base/event_loop.h"
#include "network/http/http_connection.h"
#include "network/http/refusal_log.h"
#include "network/http/request_guard.h"
#include "network/http/resources.h"
#include "network/http/sockets.h"

namespace orvalis::network {

/// How many connections are served at a time, how many of them from other machines, so that those cannot keep out this
/// machine's own roof, and how many from one of their addresses.
inline constexpr int kMostConnections = 64;
inline constexpr int kMostFromOthers = 48;
inline constexpr int kMostFromOneAddress = 16;

/// Serves resources over HTTP on one address and port.
class HttpServer : private HttpConnection::Owner {
 public:
  struct Parts {
    Sockets& sockets;
    EventLoop& loop;
    const Clock& clock;
    const Resources& resources;
    std::function<void(const std::string&)> report;  ///< something was refused, or failed; at most once a minute
    /// Called with every complete request and the status of its answer. Must not throw.
    std::function<void(const HttpRequest&, int status)> answered = {};
  };
  /// Who answers, for the header of every answer, and who may ask.
  struct Identity {
    std::vector<std::pair<std::string, std::string>> fields;
    RequestGuard guard;
  };

  explicit HttpServer(Parts parts);
  HttpServer(const HttpServer&) = delete;
  HttpServer& operator=(const HttpServer&) = delete;
  ~HttpServer();

  /// Begins to listen, as `Sockets::Listen`. Throws RunTimeError like it.
  void Open(const std::string& address, std::uint16_t port, Identity identity);
  /// Stops listening and ends all connections. Must not be called while a request is being answered.
  void Close();
  [[nodiscard]] bool open() const { return listener_ != nullptr; }

 private:
  struct Limit;
  static const Limit kLimits[];

  void Accept(std::unique_ptr<StreamSocket> socket);
  /// The limit that keeps `peer` from a further connection; null when it may have one. Ends an idle one for it where
  /// there is no room otherwise.
  [[nodiscard]] const Limit* Full(const Peer& peer);
  void CheckTimes();

  [[nodiscard]] HttpResponse Answer(const HttpRequest& request) override;
  [[nodiscard]] HttpResponse Respond(const HttpRequest& request);
  [[nodiscard]] std::string_view CommonFields() override;
  [[nodiscard]] std::int64_t Now() const override { return parts_.loop.TickCount(); }
  void NoteRefusal(const Peer& peer, const std::string& reason) override;
  void ConnectionOver() override;

  Parts parts_;
  RefusalLog refusals_;
  RefusalLog failures_;
  std::optional<RequestGuard> guard_;
  std::string identity_fields_;
  std::string common_fields_;
  std::int64_t common_fields_second_ = -1;
  std::unique_ptr<Listener> listener_;
  std::vector<std::unique_ptr<HttpConnection>> connections_;
  EventLoop::TimerId check_timer_ = 0;
  EventLoop::TimerId removal_timer_ = 0;
};

}  // namespace orvalis::network
