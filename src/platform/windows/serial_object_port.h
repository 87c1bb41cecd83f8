#pragma once

#include <QLocalServer>
#include <QLocalSocket>
#include <QProcess>
#include <QString>
#include <QTimer>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "base/run_time_error.h"
#include "unit/serial_port.h"

namespace orvalis {

/// The serial port through the driver platform's serial object, whose receives block the caller. So the object lives in
/// a separate process, another instance of this program (`RunSerialObject`), which makes one call after the other and
/// answers through a local socket. A call that must not go on is ended by killing that process.
class SerialObjectPort : public QObject, public SerialPort {
 public:
  /// `program` is the executable that knows `kSerialObjectService`.
  explicit SerialObjectPort(QString program);
  ~SerialObjectPort() override;

  void SetPort(const std::string& name) override;
  [[nodiscard]] std::string Port() const override { return name_; }
  void SetSpeed(int bits_per_second) override;
  void SetReceiveTimeout(std::chrono::seconds time_out) override;
  [[nodiscard]] bool Connected() const override { return connected_; }
  void SetConnected(bool connected) override;
  void ClearBuffers() override;
  void Transmit(std::string_view bytes) override;
  void ReceiveCounted(std::size_t count, ReceiveDone done) override;
  void ReceiveTerminated(char terminator, ReceiveDone done) override;
  void CancelReceive() override;
  void OnLost(Lost lost) override { lost_ = std::move(lost); }

 private:
  /// The outcome of a call: whether the object is connected afterwards, and its result or error.
  struct Answer {
    bool connected = false;
    std::string text;
    std::optional<RunTimeError> error;
  };
  using Answered = std::function<void(const Answer&)>;

  enum class End { kInOrder, kCutOff };

  void StartProcess();
  void EndProcess(End end);
  void Open();
  void Close();
  /// Sends a call. `answered` is called from the event loop, or from `WaitFor`.
  std::uint64_t Ask(const std::string& operation, const std::string& argument, Answered answered);
  /// Blocks until the call is answered, as opening a port does; false if that takes too long.
  bool WaitFor(std::uint64_t call, std::chrono::milliseconds patience);
  void TakeAnswers();
  void BeginReceive(const std::string& operation, const std::string& argument, ReceiveDone done);
  void Finish(Received received);
  void Lose(const Message& reason);
  /// What is asked before the port is open fails with the opening.
  void AskForOpening(const std::string& operation, const std::string& argument);

  QString program_;
  std::string name_;
  bool connected_ = false;
  std::chrono::seconds time_out_{4};
  Lost lost_;
  std::unique_ptr<QLocalServer> server_;
  std::unique_ptr<QProcess> process_;
  QLocalSocket* socket_ = nullptr;  ///< owned by the server
  std::string unsent_;              ///< calls made before the process connected
  std::uint64_t last_call_ = 0;
  std::map<std::uint64_t, Answered> open_calls_;
  std::optional<RunTimeError> opening_error_;
  ReceiveDone receive_done_;
  std::uint64_t receive_call_ = 0;
  QTimer hung_;  ///< for a receive that outlasts even the object's own time-out
};

/// The command line option for the serial object's process, followed by the socket's name.
inline constexpr const char* kSerialObjectService = "--serial-object";
/// Serves the object until the socket is closed. Returns the exit code.
[[nodiscard]] int RunSerialObject(const std::string& socket_name);

}  // namespace orvalis
