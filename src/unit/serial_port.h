#pragma once

#include <chrono>
#include <coroutine>
#include <cstddef>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "base/message.h"

namespace orvalis {

// What the ports of every system can say of themselves; %1 is the port.
inline constexpr Phrase kPortNotOpen = Message::Of("the port %1 is not open");
inline constexpr Phrase kPortCannotBeOpened = Message::Of("the port %1 cannot be opened: %2");
inline constexpr Phrase kPortVanished =
    Message::Of("the port %1 has vanished; the adapter was unplugged or lost power");
inline constexpr Phrase kPortFailed = Message::Of("the port %1 failed: %2");

/// The one serial port of the program. The link to the unit talks to it through these operations only.
class SerialPort {
 public:
  enum class Outcome {
    kComplete,  ///< all that was asked for came
    kTimedOut,  ///< it did not come in time; the text holds what did
    kClosed,    ///< the port was closed, by the program or because it vanished
  };
  struct Received {
    Outcome outcome = Outcome::kTimedOut;
    std::string text;
  };
  using ReceiveDone = std::function<void(Received)>;
  using Lost = std::function<void(const Message& reason)>;

  /// A receive ends here at the latest, so that a device that never stops talking fills no memory. Far longer than
  /// any line of the unit.
  static constexpr std::size_t kMaxReceive = 4096;

  virtual ~SerialPort() = default;

  /// A number ("2" is the system's second port) or the path of a device.
  virtual void SetPort(const std::string& name) = 0;
  [[nodiscard]] virtual std::string Port() const = 0;
  virtual void SetSpeed(int bits_per_second) = 0;
  virtual void SetReceiveTimeout(std::chrono::seconds time_out) = 0;

  [[nodiscard]] virtual bool Connected() const = 0;
  /// Opens (8 data bits, no parity, 1 stop bit) or closes the port. Opening throws RunTimeError: kFileNotFound,
  /// kPermissionDenied, kPortInUse or kDeviceUnavailable, with a description for a person. Closing never fails.
  virtual void SetConnected(bool connected) = 0;

  /// Drops what was received and not read and what was not yet sent.
  virtual void ClearBuffers() = 0;
  /// Queues bytes for sending. Throws RunTimeError kPortClosed when the port is not open.
  virtual void Transmit(std::string_view bytes) = 0;

  /// An answer of so many characters is about to come. They need not be looked at one by one: input may be picked up
  /// once the line can have delivered them, but for what an answer that begins late or stops short leaves. By default
  /// nothing.
  virtual void Expect(std::size_t /*characters*/) {}

  /// Starts a receive, of which there is one at a time; `done` is called once, from the event loop or from
  /// `SetConnected(false)`, unless the receive is cancelled.
  virtual void ReceiveCounted(std::size_t count, ReceiveDone done) = 0;
  /// The terminator is part of the text.
  virtual void ReceiveTerminated(char terminator, ReceiveDone done) = 0;
  virtual void CancelReceive() = 0;

  /// Who is told when an open port vanishes. The port is closed by then; a receive under way ends afterwards.
  virtual void OnLost(Lost lost) = 0;
};

/// What `co_await Receive(…)` waits on; destroying the waiting coroutine cancels the receive.
class [[nodiscard]] ReceiveAwaiter {
 public:
  using Start = void (*)(SerialPort&, std::size_t argument, SerialPort::ReceiveDone);

  ReceiveAwaiter(SerialPort& port, Start start, std::size_t argument)
      : port_(port), start_(start), argument_(argument) {}
  ReceiveAwaiter(const ReceiveAwaiter&) = delete;
  ReceiveAwaiter& operator=(const ReceiveAwaiter&) = delete;
  ~ReceiveAwaiter() {
    if (waiting_) port_.CancelReceive();
  }

  [[nodiscard]] bool await_ready() const noexcept { return false; }
  void await_suspend(std::coroutine_handle<> coroutine) {
    waiting_ = true;
    start_(port_, argument_, [this, coroutine](SerialPort::Received received) {
      waiting_ = false;
      received_ = std::move(received);
      coroutine.resume();
    });
  }
  SerialPort::Received await_resume() { return std::move(received_); }

 private:
  SerialPort& port_;
  Start start_;
  std::size_t argument_;
  bool waiting_ = false;
  SerialPort::Received received_;
};

inline ReceiveAwaiter ReceiveCounted(SerialPort& port, std::size_t count) {
  return {port,
          [](SerialPort& p, std::size_t n, SerialPort::ReceiveDone done) { p.ReceiveCounted(n, std::move(done)); },
          count};
}

inline ReceiveAwaiter ReceiveTerminated(SerialPort& port, char terminator) {
  return {port,
          [](SerialPort& p, std::size_t c, SerialPort::ReceiveDone done) {
            p.ReceiveTerminated(static_cast<char>(c), std::move(done));
          },
          static_cast<std::size_t>(static_cast<unsigned char>(terminator))};
}

}  // namespace orvalis
