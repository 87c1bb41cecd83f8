#pragma once

#include <QObject>
#include <QTimer>
#include <cstddef>
#include <string>
#include <utility>

#include "platform/qt/receive_queue.h"
#include "platform/windows/handle.h"
#include "unit/serial_port.h"

namespace orvalis {

/// The name of a serial port: "2" is COM2, as are "COM2", "com2" and "\\.\COM2"; anything else is the name of a device.
/// Throws RunTimeError kFileNotFound for an invalid port number or an empty name.
[[nodiscard]] std::string ComPortName(const std::string& port);

/// The serial port through the Windows communications functions, without blocking on the line. A timer fetches input:
/// often while a receive is pending, rarely otherwise, to notice a port that is gone.
class ComPort : public QObject, public SerialPort {
 public:
  ComPort();
  ~ComPort() override;

  void SetPort(const std::string& name) override { name_ = ComPortName(name); }
  [[nodiscard]] std::string Port() const override { return name_; }
  void SetSpeed(int bits_per_second) override { speed_ = bits_per_second; }
  void SetReceiveTimeout(std::chrono::seconds time_out) override { received_.SetTimeOut(time_out); }
  [[nodiscard]] bool Connected() const override { return static_cast<bool>(port_); }
  void SetConnected(bool connected) override;
  void ClearBuffers() override;
  void Transmit(std::string_view bytes) override;
  void ReceiveCounted(std::size_t count, ReceiveDone done) override;
  void ReceiveTerminated(char terminator, ReceiveDone done) override;
  void CancelReceive() override { received_.Cancel(); }
  void OnLost(Lost lost) override { lost_ = std::move(lost); }

 private:
  void Open();
  void Close();
  void Fetch();
  /// Closes a port that failed and reports why, from the event loop.
  void Lose(DWORD error);
  /// Sets the rate of fetching.
  void Pace();

  std::string name_;
  int speed_ = 9600;
  Lost lost_;
  Handle port_;
  ReceiveQueue received_;
  QTimer fetch_;
};

}  // namespace orvalis
