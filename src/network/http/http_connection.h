#pragma once

#include <chrono>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <string_view>

#include "network/http/event_channel.h"
#include "network/http/http_parser.h"
#include "network/http/sockets.h"

namespace orvalis::network {

/// The most that is kept for a peer that does not fetch it, in bytes. Beyond it no further request of that peer is
/// read, and a reader of a stream is dropped.
inline constexpr std::size_t kMostUnsent = 65'536;

/// One client's connection: takes its requests from the bytes, has them answered one after another, and keeps to the
/// limits.
class HttpConnection : public StreamSocket::User, public EventChannel::Reader {
 public:
  /// Whoever accepted the connection.
  class Owner {
   public:
    /// Answers `request`; does not throw.
    [[nodiscard]] virtual HttpResponse Answer(const HttpRequest& request) = 0;
    /// The header fields of every answer.
    [[nodiscard]] virtual std::string_view CommonFields() = 0;
    /// Milliseconds since the system started.
    [[nodiscard]] virtual std::int64_t Now() const = 0;
    /// Something was refused, and why.
    virtual void NoteRefusal(const Peer& peer, const std::string& reason) = 0;
    /// The connection has ended. It is to be destroyed, but not from here.
    virtual void ConnectionOver() = 0;

   protected:
    ~Owner() = default;
  };

  /// Both must outlive the connection.
  HttpConnection(std::unique_ptr<StreamSocket> socket, Owner& owner);
  HttpConnection(const HttpConnection&) = delete;
  HttpConnection& operator=(const HttpConnection&) = delete;
  ~HttpConnection();

  /// Begins reading requests.
  void Start() { socket_->Use(*this); }
  /// Refuses whatever the peer wants, and closes.
  void Refuse(int status, const std::string& reason);
  /// Ends the connection if its time is over.
  void CheckTime();
  /// How long it has waited for a request; 0 while it has one or sends.
  [[nodiscard]] std::chrono::milliseconds Idle() const;
  /// Ends the connection, which is idle, for another.
  void MakeRoom() { End(); }

  [[nodiscard]] bool over() const { return state_ == State::kOver; }
  /// Whether the connection counts: one that was refused only waits for its peer to see that.
  [[nodiscard]] bool counts() const { return state_ == State::kOpen || state_ == State::kStreaming; }
  [[nodiscard]] const Peer& peer() const { return socket_->peer(); }

  void Received(std::string_view bytes) override;
  void Sent() override;
  void Closed() override { End(); }
  void Push(std::string_view bytes) override;

 private:
  enum class State {
    kOpen,        ///< reads requests
    kStreaming,   ///< sends events until one side closes
    kDiscarding,  ///< refused: reads on for a moment, because closing now would take the answer from the peer
    kClosing,     ///< sends the rest
    kOver,
  };

  /// Takes all complete requests from the front of `bytes` and returns how many bytes that were.
  std::size_t TakeRequests(std::string_view bytes);
  void AnswerRequest();
  void WriteHeader(const HttpResponse& response, bool keep_alive);
  void Flush();
  [[nodiscard]] bool HasRoom() const { return output_.size() + socket_->unsent() <= kMostUnsent; }
  void WaitAtMost(std::chrono::milliseconds time) { deadline_ = owner_.Now() + time.count(); }
  void End();

  std::unique_ptr<StreamSocket> socket_;
  Owner& owner_;
  State state_ = State::kOpen;
  HttpParser parser_;
  std::string input_;     ///< the beginning of a request
  std::string output_;    ///< answers that are sent together
  bool held_up_ = false;  ///< not reading until the peer has fetched its answers
  std::int64_t deadline_ = 0;
  std::size_t last_unsent_ = 0;
  std::size_t discarded_ = 0;
  bool served_ = false;       ///< has had a request
  std::int64_t quiet_since_;  ///< when it last had one, or began
  EventChannel* channel_ = nullptr;
};

}  // namespace orvalis::network
