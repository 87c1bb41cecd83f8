#pragma once

#include <QObject>
#include <QSerialPort>
#include <QTimer>
#include <cstddef>
#include <string>
#include <utility>

#include "platform/qt/receive_queue.h"
#include "unit/serial_port.h"

namespace orvalis {

/// The serial port on Qt. It never blocks: input is collected, and a receive that is satisfied, times out or is cut off
/// is reported from the event loop.
class QtSerialPort : public QObject, public SerialPort {
  Q_OBJECT
 public:
  QtSerialPort();
  ~QtSerialPort() override;

  void SetPort(const std::string& name) override;
  [[nodiscard]] std::string Port() const override { return device_; }
  void SetSpeed(int bits_per_second) override { speed_ = bits_per_second; }
  void SetReceiveTimeout(std::chrono::seconds time_out) override { received_.SetTimeOut(time_out); }
  [[nodiscard]] bool Connected() const override { return port_.isOpen(); }
  void SetConnected(bool connected) override;
  void ClearBuffers() override;
  void Transmit(std::string_view bytes) override;
  void Expect(std::size_t characters) override;
  void ReceiveCounted(std::size_t count, ReceiveDone done) override {
    received_.ReceiveCounted(count, std::move(done));
  }
  void ReceiveTerminated(char terminator, ReceiveDone done) override {
    received_.ReceiveTerminated(terminator, std::move(done));
  }
  void CancelReceive() override { received_.Cancel(); }
  void OnLost(Lost lost) override { lost_ = std::move(lost); }

 private:
  void Open();
  void Close();
  void PickUp();
  /// Sleeps through the time that the rest of the expected answer needs on the line.
  void Sleep();
  void ExpectNothing();
  void HandleError(QSerialPort::SerialPortError error);

  std::string device_;
  int speed_ = 9600;
  Lost lost_;
  QSerialPort port_;
  ReceiveQueue received_;
  std::size_t missing_ = 0;  ///< characters of the expected answer
  int sleeps_left_ = 0;      ///< then every character is picked up as it comes
  QTimer wake_;
};

}  // namespace orvalis
