#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "unit/serial_port.h"

namespace orvalis {

/// The input of a serial port and the one receive that waits for it. Its completion or time-out is reported from the
/// event loop.
class ReceiveQueue : public QObject {
 public:
  ReceiveQueue();

  void SetTimeOut(std::chrono::milliseconds time_out) { time_out_ = time_out; }

  void ReceiveCounted(std::size_t count, SerialPort::ReceiveDone done);
  void ReceiveTerminated(char terminator, SerialPort::ReceiveDone done);
  void Cancel();
  [[nodiscard]] bool waiting() const { return request_.has_value(); }

  /// Adds input. A receive that it satisfies completes at once.
  void Take(std::string_view bytes);
  void Drop() { arrived_.clear(); }
  /// The port is closed: a pending receive ends with what has arrived.
  void Close();

 private:
  struct Request {
    std::size_t count = 0;           ///< for a counted receive
    std::optional<char> terminator;  ///< for a terminated one
    SerialPort::ReceiveDone done;
  };

  void Begin(Request request);
  /// How many characters satisfy the request; 0 while they do not.
  [[nodiscard]] std::size_t Satisfied() const;
  void Deliver();
  void Finish(SerialPort::Outcome outcome, std::size_t characters);

  std::chrono::milliseconds time_out_{4000};
  std::string arrived_;
  std::optional<Request> request_;
  QTimer deliver_;  ///< completes a receive that earlier input satisfies
  QTimer give_up_;
};

}  // namespace orvalis
