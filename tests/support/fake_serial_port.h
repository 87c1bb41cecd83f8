#pragma once

#include <deque>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

#include "base/run_time_error.h"
#include "tests/support/fake_event_loop.h"
#include "unit/serial_port.h"

namespace orvalis::test {

/// A frame of 117 characters: the dry demonstration line's fields but for those in `measured` ("TA=+00600 WND=0010"),
/// six characters of the unit's own, and "#".
inline std::string LiveFrame(const std::string& measured = "") {
  std::string frame =
      "HUM=0520 LGT=1000 R=0120 WND=0020 TP=-02000 TTP=+00600 TA=+00500 AH=1 HB=0 AR=1 RB=0 AW=1 AL=0 AC=1 Trg=+03691 "
      "FW=21#";
  std::istringstream fields(measured);
  for (std::string field; fields >> field;) {
    const std::string name = " " + field.substr(0, field.find('=') + 1);
    frame.replace((" " + frame).find(name), field.size(), field);
  }
  return frame;
}

/// A serial port with a unit behind it that does what the test wants. It writes down every operation.
class FakeSerialPort : public SerialPort {
 public:
  explicit FakeSerialPort(FakeEventLoop& loop) : loop_(loop) {}

  // What the unit does.
  std::string greeting = "W";
  std::string frame = LiveFrame();
  std::deque<std::string> next_frames;  ///< taken before `frame`
  bool silent = false;
  std::function<std::string(std::string_view bytes)> unit;  ///< answers in place of all this
  std::chrono::milliseconds answer_delay{0};
  std::optional<RunTimeError> open_failure;
  std::function<std::string()> measure;  ///< makes each frame when it is asked for, instead of `frame`
  /// How long what the unit sends now stays in the line; it never overtakes what was sent before. None: not at all.
  std::function<std::chrono::milliseconds()> line_delay;
  std::int64_t line_empty_at = 0;  ///< TickCount when the last of it comes out

  bool writes_down = true;  ///< off for runs of millions of operations
  std::vector<std::string> calls;
  std::string sent;

  void SetPort(const std::string& name) override {
    port_ = name;
    WriteDown("port " + name);
  }
  [[nodiscard]] std::string Port() const override { return port_; }
  void SetSpeed(int speed) override { WriteDown("speed " + std::to_string(speed)); }
  void SetReceiveTimeout(std::chrono::seconds time_out) override {
    time_out_ = time_out;
    WriteDown("time-out " + std::to_string(time_out.count()));
  }
  [[nodiscard]] bool Connected() const override { return open_; }
  void SetConnected(bool connected) override {
    WriteDown(connected ? "open" : "close");
    if (connected && open_failure) throw RunTimeError(*open_failure);
    open_ = connected;
    if (!connected) Finish(Outcome::kClosed, "");
  }
  void ClearBuffers() override {
    WriteDown("clear");
    arrived_.clear();
  }
  void Transmit(std::string_view bytes) override {
    if (!open_) throw RunTimeError(RunTimeError::kPortClosed, "not open");
    WriteDown("send " + std::string(bytes));
    const bool is_request = bytes == "F" && last_sent_ == ":";
    last_sent_ = bytes;
    if (writes_down) sent += bytes;
    if (unit) return Deliver(unit(bytes));
    if (silent) return;
    if (bytes == "\x06") Send(greeting);
    if (!is_request) return;
    if (measure) return Send(measure());
    Send(next_frames.empty() ? frame : next_frames.front());
    if (!next_frames.empty()) next_frames.pop_front();
  }
  void ReceiveCounted(std::size_t count, ReceiveDone done) override {
    WriteDown("receive " + std::to_string(count));
    Begin([this, count] { return arrived_.size() >= count ? count : 0; }, std::move(done));
  }
  void ReceiveTerminated(char terminator, ReceiveDone done) override {
    WriteDown(std::string("receive until ") + terminator);
    Begin([this, terminator] { return arrived_.find(terminator) + 1; }, std::move(done));
  }
  void CancelReceive() override {
    done_ = {};
    loop_.Cancel(timer_);
  }
  void OnLost(Lost lost) override { lost_ = std::move(lost); }

  /// The adapter is pulled out.
  void PullOut(const std::string& reason) {
    open_ = false;
    if (lost_) lost_(reason);
    Finish(Outcome::kClosed, "");
  }
  /// The unit's end of the line.
  void Send(const std::string& text) {
    if (!line_delay) {
      arrived_ += text;
      return;
    }
    line_empty_at = std::max(line_empty_at, loop_.TickCount() + line_delay().count());
    loop_.CallAfter(std::chrono::milliseconds(line_empty_at - loop_.TickCount()), [this, text] { Deliver(text); });
  }
  /// Bytes come out of the line.
  void Deliver(const std::string& text) {
    if (open_) arrived_ += text;
    if (done_ && satisfied_() != 0) End();
  }

 private:
  void WriteDown(std::string call) {
    if (writes_down) calls.push_back(std::move(call));
  }
  void Begin(std::function<std::size_t()> satisfied, ReceiveDone done) {
    done_ = std::move(done);
    satisfied_ = std::move(satisfied);
    const bool complete = satisfied_() != 0;
    timer_ = loop_.CallAfter(complete ? answer_delay : std::chrono::milliseconds(time_out_), [this] { End(); });
  }
  void End() {
    const std::size_t count = satisfied_();
    std::string text = arrived_.substr(0, count != 0 ? count : arrived_.size());
    arrived_.erase(0, text.size());
    Finish(count != 0 ? Outcome::kComplete : Outcome::kTimedOut, std::move(text));
  }
  void Finish(Outcome outcome, std::string text) {
    if (!done_) return;
    const ReceiveDone done = std::exchange(done_, {});
    loop_.Cancel(timer_);
    done({outcome, std::move(text)});
  }

  FakeEventLoop& loop_;
  std::string port_;
  bool open_ = false;
  std::chrono::seconds time_out_{4};
  std::string last_sent_;
  std::string arrived_;
  ReceiveDone done_;
  std::function<std::size_t()> satisfied_;  ///< how much of what arrived the receive wants, 0 while it is not there
  EventLoop::TimerId timer_ = 0;
  Lost lost_;
};

}  // namespace orvalis::test
