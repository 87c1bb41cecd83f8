#include "network/http/http_connection.h"

#include <algorithm>
#include <array>
#include <utility>

namespace orvalis::network {
namespace {

using std::chrono::milliseconds;

/// For a whole request, the first of a connection counted from its beginning, and for a peer to fetch some of its
/// answer.
constexpr milliseconds kRequestTime{10'000};
/// Between two requests.
constexpr milliseconds kIdleTime{60'000};
/// For a reader of a stream that fetches nothing.
constexpr milliseconds kStreamTime{30'000};
/// For a peer to read that it was refused, and how much it may send meanwhile.
constexpr milliseconds kDiscardTime{1'000};
constexpr std::size_t kMostDiscarded = 1'048'576;

struct RefusalReason {
  int status;
  const char* reason;
};
constexpr std::array<RefusalReason, 7> kReasons{{
    {kBadRequest, "it is not valid HTTP"},
    {kRequestTimeout, "it did not arrive within ten seconds"},
    {kContentTooLarge, "its body is larger than 64 KB"},
    {kExpectationFailed, "it expects something other than 100-continue"},
    {kHeaderTooLarge, "its header is larger than 8 KB"},
    {kNotImplemented, "its body has an unknown transfer coding"},
    {kBadVersion, "it is not HTTP/1"},
}};

const char* ReasonOfRefusal(int status) {
  for (const RefusalReason& entry : kReasons) {
    if (entry.status == status) return entry.reason;
  }
  return "it cannot be answered";
}

}  // namespace

HttpConnection::HttpConnection(std::unique_ptr<StreamSocket> socket, Owner& owner)
    : socket_(std::move(socket)), owner_(owner), quiet_since_(owner.Now()) {
  WaitAtMost(kRequestTime);
}

HttpConnection::~HttpConnection() {
  if (channel_ != nullptr) channel_->Leave(*this);
}

void HttpConnection::Received(std::string_view bytes) {
  if (state_ == State::kDiscarding) {
    discarded_ += bytes.size();
    if (discarded_ > kMostDiscarded) End();
  }
  if (state_ != State::kOpen) return;
  if (input_.empty()) {
    input_.append(bytes.substr(TakeRequests(bytes)));
  } else {
    input_.append(bytes);
    input_.erase(0, TakeRequests(input_));
  }
  Flush();
}

void HttpConnection::Sent() {
  if (state_ != State::kOpen || !held_up_) return;
  // What is sent from here may be taken at once, without another call.
  while (state_ == State::kOpen && held_up_ && socket_->unsent() == 0) {
    held_up_ = false;
    input_.erase(0, TakeRequests(input_));
    Flush();
  }
  if (!held_up_) socket_->SetReading(true);
}

std::size_t HttpConnection::TakeRequests(std::string_view bytes) {
  std::size_t used = 0;
  while (state_ == State::kOpen && used < bytes.size()) {
    if (!HasRoom()) {
      held_up_ = true;
      socket_->SetReading(false);
      break;
    }
    const bool had_begun = parser_.begun();
    const std::size_t count = parser_.Feed(bytes.substr(used));
    used += count;
    if (!had_begun && parser_.begun()) WaitAtMost(kRequestTime);
    if (parser_.refusal() != 0) {
      Refuse(parser_.refusal(), ReasonOfRefusal(parser_.refusal()));
    } else if (parser_.complete()) {
      AnswerRequest();
    } else {
      if (parser_.TakeContinue()) output_ += "HTTP/1.1 100 Continue\r\n\r\n";
      break;
    }
  }
  return used;
}

void HttpConnection::AnswerRequest() {
  HttpRequest request = parser_.request();
  request.peer = socket_->peer();
  const HttpResponse response = owner_.Answer(request);
  const bool streams = response.events != nullptr && request.method == Method::kGet;
  const bool keep_alive = parser_.keep_alive() && !streams;
  WriteHeader(response, keep_alive);
  if (request.method != Method::kHead) output_ += response.body;
  served_ = true;
  quiet_since_ = owner_.Now();
  WaitAtMost(keep_alive ? kIdleTime : kRequestTime);
  if (streams) {
    state_ = State::kStreaming;
    channel_ = response.events;
    channel_->Join(*this);
    socket_->KeepLittleUnsent();
  } else if (!keep_alive) {
    state_ = State::kClosing;
  }
  parser_.Reset();
}

void HttpConnection::WriteHeader(const HttpResponse& response, bool keep_alive) {
  const auto add = [this](std::string_view name, std::string_view value) {
    output_.append(name).append(": ").append(value).append("\r\n");
  };
  output_.append("HTTP/1.1 ").append(std::to_string(response.status)).append(" ").append(ReasonPhrase(response.status));
  output_.append("\r\n").append(owner_.CommonFields());
  if (response.status != kNoContent) {
    add("Content-Type", response.content_type);
    if (response.events == nullptr) add("Content-Length", std::to_string(response.body.size()));
  }
  for (const auto& [name, value] : response.headers) add(name, value);
  // Said in both cases: clients of HTTP/1.0 close otherwise.
  add("Connection", keep_alive ? "keep-alive" : "close");
  output_ += "\r\n";
}

void HttpConnection::Refuse(int status, const std::string& reason) {
  owner_.NoteRefusal(socket_->peer(), reason);
  const HttpResponse response = TextAnswer(status, "Refused: " + reason);
  WriteHeader(response, false);
  output_ += response.body;
  state_ = State::kDiscarding;
  WaitAtMost(kDiscardTime);
  Flush();
}

void HttpConnection::Flush() {
  if (!output_.empty() && state_ != State::kOver) socket_->Send(std::exchange(output_, {}));
  if (state_ == State::kClosing) socket_->Close();
}

void HttpConnection::Push(std::string_view bytes) {
  if (state_ != State::kStreaming) return;
  if (socket_->unsent() + bytes.size() > kMostUnsent) {
    owner_.NoteRefusal(socket_->peer(), "it does not read its stream of events");
    End();
    return;
  }
  socket_->Send(bytes);
}

void HttpConnection::CheckTime() {
  const std::size_t unsent = socket_->unsent();
  const bool fetches = unsent < std::exchange(last_unsent_, unsent);
  if (state_ == State::kStreaming) {
    if (unsent == 0 || fetches) WaitAtMost(kStreamTime);
  } else if (fetches && state_ != State::kDiscarding) {
    deadline_ = std::max(deadline_, owner_.Now() + kRequestTime.count());
  }
  if (owner_.Now() < deadline_) return;
  // A peer that has begun a request is told; one that was silent, or does not read, is not.
  if (state_ == State::kOpen && parser_.begun() && !held_up_) {
    Refuse(kRequestTimeout, ReasonOfRefusal(kRequestTimeout));
  } else {
    if (state_ == State::kOpen && !served_) owner_.NoteRefusal(socket_->peer(), "it sent nothing for ten seconds");
    End();
  }
}

milliseconds HttpConnection::Idle() const {
  const bool waits = state_ == State::kOpen && !parser_.begun() && !held_up_ && socket_->unsent() == 0;
  return milliseconds(waits ? owner_.Now() - quiet_since_ : 0);
}

void HttpConnection::End() {
  if (std::exchange(state_, State::kOver) != State::kOver) owner_.ConnectionOver();
}

}  // namespace orvalis::network
