#pragma once

#include <QObject>
#include <QSerialPort>
#include <QTimer>
#include <cstddef>
#include <optional>
#include <string>

#include "acquisition/serial_port.h"

namespace orvalis {

/// The serial port by Qt, without a wait anywhere: what comes is collected, and a receive that is satisfied, late or
/// cut off is told from the event loop.
class QtSerialPort : public QObject, public SerialPort {
  Q_OBJECT
 public:
  QtSerialPort();
  ~QtSerialPort() override;

  void SetPort(const std::string& name) override;
  [[nodiscard]] std::string Port() const override { return device_; }
  void SetSpeed(int bits_per_second) override { speed_ = bits_per_second; }
  void SetReceiveTimeout(std::chrono::seconds time_out) override { time_out_ = time_out; }
  [[nodiscard]] bool Connected() const override { return port_.isOpen(); }
  void SetConnected(bool connected) override;
  void ClearBuffers() override;
  void Transmit(std::string_view bytes) override;
  void ReceiveCounted(std::size_t count, ReceiveDone done) override;
  void ReceiveTerminated(char terminator, ReceiveDone done) override;
  void CancelReceive() override;
  void OnLost(Lost lost) override { lost_ = std::move(lost); }

 private:
  struct Request {
    std::size_t count = 0;           ///< for a counted receive
    std::optional<char> terminator;  ///< for a terminated one
    ReceiveDone done;
  };

  void Open();
  void Close();
  void Begin(Request request);
  /// How many characters of the buffer satisfy the request; 0 while they do not.
  [[nodiscard]] std::size_t Satisfied() const;
  void TakeArrived();
  void Deliver();
  void Finish(Outcome outcome, std::size_t characters);
  void HandleError(QSerialPort::SerialPortError error);

  std::string device_;
  int speed_ = 9600;
  std::chrono::seconds time_out_{4};
  Lost lost_;
  QSerialPort port_;
  std::string arrived_;
  std::optional<Request> request_;
  QTimer deliver_;  ///< tells of a receive that what had come already satisfies
  QTimer give_up_;
};

}  // namespace orvalis
