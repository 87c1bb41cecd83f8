#include "platform/qt/receive_queue.h"

#include <algorithm>
#include <utility>

namespace orvalis {

ReceiveQueue::ReceiveQueue() {
  deliver_.setSingleShot(true);
  give_up_.setSingleShot(true);
  connect(&deliver_, &QTimer::timeout, this, &ReceiveQueue::Deliver);
  connect(&give_up_, &QTimer::timeout, this, [this] { Finish(SerialPort::Outcome::kTimedOut, arrived_.size()); });
}

void ReceiveQueue::ReceiveCounted(std::size_t count, SerialPort::ReceiveDone done) {
  Begin({.count = count, .terminator = std::nullopt, .done = std::move(done)});
}

void ReceiveQueue::ReceiveTerminated(char terminator, SerialPort::ReceiveDone done) {
  Begin({.count = 0, .terminator = terminator, .done = std::move(done)});
}

void ReceiveQueue::Cancel() {
  request_.reset();
  deliver_.stop();
  give_up_.stop();
}

void ReceiveQueue::Begin(Request request) {
  request_ = std::move(request);
  give_up_.start(time_out_);
  if (Satisfied() != 0) deliver_.start(0);
}

std::size_t ReceiveQueue::Satisfied() const {
  if (!request_) return 0;
  if (!request_->terminator) return arrived_.size() >= request_->count ? request_->count : 0;
  const std::size_t end = arrived_.find(*request_->terminator);
  return end == std::string::npos ? 0 : end + 1;
}

void ReceiveQueue::Take(std::string_view bytes) {
  const std::size_t room = SerialPort::kMaxReceive - std::min(arrived_.size(), SerialPort::kMaxReceive);
  arrived_.append(bytes.substr(0, room));
  Deliver();
}

void ReceiveQueue::Close() {
  Finish(SerialPort::Outcome::kClosed, arrived_.size());
  arrived_.clear();
}

void ReceiveQueue::Deliver() {
  if (const std::size_t satisfied = Satisfied(); satisfied != 0) {
    Finish(SerialPort::Outcome::kComplete, satisfied);
  } else if (request_ && arrived_.size() >= SerialPort::kMaxReceive) {
    Finish(SerialPort::Outcome::kTimedOut, arrived_.size());
  }
}

void ReceiveQueue::Finish(SerialPort::Outcome outcome, std::size_t characters) {
  if (!request_) return;
  const SerialPort::ReceiveDone done = std::move(request_->done);
  Cancel();
  SerialPort::Received received{outcome, arrived_.substr(0, characters)};
  arrived_.erase(0, characters);
  done(std::move(received));
}

}  // namespace orvalis
