#include "platform/linux/qt_serial_port.h"

#include <QFileInfo>
#include <algorithm>
#include <utility>

#include "base/run_time_error.h"
#include "platform/linux/serial_ports.h"

namespace orvalis {

QtSerialPort::QtSerialPort() {
  deliver_.setSingleShot(true);
  give_up_.setSingleShot(true);
  connect(&deliver_, &QTimer::timeout, this, &QtSerialPort::Deliver);
  connect(&give_up_, &QTimer::timeout, this, [this] { Finish(Outcome::kTimedOut, arrived_.size()); });
  connect(&port_, &QSerialPort::readyRead, this, &QtSerialPort::TakeArrived);
  // Queued: the error may be noticed in the middle of a transmission, and closing the port there would pull it away
  // from under Qt's own code.
  connect(&port_, &QSerialPort::errorOccurred, this, &QtSerialPort::HandleError, Qt::QueuedConnection);
}

QtSerialPort::~QtSerialPort() {
  // Nobody waits for an answer any more.
  request_.reset();
  if (port_.isOpen()) port_.clear();
}

void QtSerialPort::SetPort(const std::string& name) { device_ = DevicePath(name); }

void QtSerialPort::SetConnected(bool connected) {
  if (connected == port_.isOpen()) return;
  if (connected) {
    Open();
  } else {
    Close();
  }
}

void QtSerialPort::Open() {
  // Links such as /dev/serial/by-id/… are followed, so that one device has one lock.
  const QString given = QString::fromStdString(device_);
  const QString canonical = QFileInfo(given).canonicalFilePath();
  port_.setPortName(canonical.isEmpty() ? given : canonical);
  port_.setBaudRate(speed_);
  port_.setDataBits(QSerialPort::Data8);
  port_.setParity(QSerialPort::NoParity);
  port_.setStopBits(QSerialPort::OneStop);
  port_.setFlowControl(QSerialPort::NoFlowControl);
  port_.clearError();
  if (!port_.open(QIODevice::ReadWrite)) {
    const RunTimeError failure =
        OpenFailure(device_, port_.error() == QSerialPort::PermissionError, port_.errorString().toStdString());
    port_.clearError();
    throw failure;
  }
  arrived_.clear();
}

void QtSerialPort::Close() {
  if (port_.isOpen()) {
    // Unsent characters would keep the system's close waiting for the line.
    port_.clear();
    port_.close();
  }
  port_.clearError();
  Finish(Outcome::kClosed, arrived_.size());
  arrived_.clear();
}

void QtSerialPort::ClearBuffers() {
  if (port_.isOpen()) port_.clear();
  arrived_.clear();
}

void QtSerialPort::Transmit(std::string_view bytes) {
  if (!port_.isOpen()) throw RunTimeError(RunTimeError::kPortClosed, "the port " + device_ + " is not open");
  if (port_.write(bytes.data(), static_cast<qint64>(bytes.size())) < 0) {
    throw RunTimeError(RunTimeError::kDeviceUnavailable,
                       "cannot send on the port " + device_ + ": " + port_.errorString().toStdString());
  }
  port_.flush();
}

void QtSerialPort::ReceiveCounted(std::size_t count, ReceiveDone done) {
  Begin({.count = count, .terminator = std::nullopt, .done = std::move(done)});
}

void QtSerialPort::ReceiveTerminated(char terminator, ReceiveDone done) {
  Begin({.count = 0, .terminator = terminator, .done = std::move(done)});
}

void QtSerialPort::CancelReceive() {
  request_.reset();
  deliver_.stop();
  give_up_.stop();
}

void QtSerialPort::Begin(Request request) {
  request_ = std::move(request);
  give_up_.start(time_out_);
  if (Satisfied() != 0) deliver_.start(0);
}

std::size_t QtSerialPort::Satisfied() const {
  if (!request_) return 0;
  if (!request_->terminator) return arrived_.size() >= request_->count ? request_->count : 0;
  const std::size_t end = arrived_.find(*request_->terminator);
  return end == std::string::npos ? 0 : end + 1;
}

void QtSerialPort::TakeArrived() {
  const QByteArray bytes = port_.readAll();
  const std::size_t room = kMaxReceive - std::min(arrived_.size(), kMaxReceive);
  arrived_.append(bytes.constData(), std::min(room, static_cast<std::size_t>(bytes.size())));
  Deliver();
}

void QtSerialPort::Deliver() {
  if (const std::size_t satisfied = Satisfied(); satisfied != 0) {
    Finish(Outcome::kComplete, satisfied);
  } else if (request_ && arrived_.size() >= kMaxReceive) {
    Finish(Outcome::kTimedOut, arrived_.size());
  }
}

void QtSerialPort::Finish(Outcome outcome, std::size_t characters) {
  if (!request_) return;
  const ReceiveDone done = std::move(request_->done);
  CancelReceive();
  Received received{outcome, arrived_.substr(0, characters)};
  arrived_.erase(0, characters);
  done(std::move(received));
}

void QtSerialPort::HandleError(QSerialPort::SerialPortError error) {
  // An error of an earlier opening was cleared meanwhile.
  if (!port_.isOpen() || port_.error() == QSerialPort::NoError) return;
  if (error == QSerialPort::UnsupportedOperationError || error == QSerialPort::TimeoutError) return;
  const bool gone = !QFileInfo::exists(QString::fromStdString(device_));
  const std::string reason = gone ? "the port " + device_ + " has vanished; the adapter was pulled out or lost power"
                                  : "the port " + device_ + " failed: " + port_.errorString().toStdString();
  port_.close();
  port_.clearError();
  // The reason first: whoever waits for an answer is about to say why none came.
  if (lost_) lost_(reason);
  Close();
}

}  // namespace orvalis
