#include "platform/linux/qt_serial_port.h"

#include <QFileInfo>
#include <QSocketNotifier>
#include <algorithm>
#include <chrono>

#include "base/run_time_error.h"
#include "platform/linux/serial_ports.h"

namespace orvalis {
namespace {

constexpr int kBitsPerCharacter = 10;  // with the start and the stop bit
constexpr int kSleepsPerAnswer = 3;
constexpr std::chrono::milliseconds kShortestSleep{2};

/// Whether the port's file is watched for input. Without it Qt's port is as ever: it wakes the program for each piece.
void WatchInput(const QSerialPort& port, bool watch) {
  for (QSocketNotifier* notifier : port.findChildren<QSocketNotifier*>(Qt::FindDirectChildrenOnly)) {
    if (notifier->type() == QSocketNotifier::Read) notifier->setEnabled(watch);
  }
}

}  // namespace

QtSerialPort::QtSerialPort() {
  wake_.setSingleShot(true);
  wake_.setTimerType(Qt::PreciseTimer);
  connect(&wake_, &QTimer::timeout, this, [this] { WatchInput(port_, true); });
  connect(&port_, &QSerialPort::readyRead, this, &QtSerialPort::PickUp);
  // Queued: the error may be noticed in the middle of a transmission, and closing the port there would pull it away
  // from under Qt's own code.
  connect(&port_, &QSerialPort::errorOccurred, this, &QtSerialPort::HandleError, Qt::QueuedConnection);
}

QtSerialPort::~QtSerialPort() {
  // No answer is expected any more.
  received_.Cancel();
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
  received_.Drop();
}

void QtSerialPort::Close() {
  ExpectNothing();
  if (port_.isOpen()) {
    // Unsent characters would keep the system's close waiting for the line.
    port_.clear();
    port_.close();
  }
  port_.clearError();
  received_.Close();
}

void QtSerialPort::ClearBuffers() {
  ExpectNothing();
  if (port_.isOpen()) port_.clear();
  received_.Drop();
}

void QtSerialPort::Transmit(std::string_view bytes) {
  if (!port_.isOpen()) throw RunTimeError(RunTimeError::kPortClosed, kPortNotOpen.With(device_));
  if (port_.write(bytes.data(), static_cast<qint64>(bytes.size())) < 0) {
    throw RunTimeError(RunTimeError::kDeviceUnavailable,
                       Message::Of("cannot send on the port %1: %2").With(device_, port_.errorString().toStdString()));
  }
  port_.flush();
}

void QtSerialPort::Expect(std::size_t characters) {
  missing_ = characters;
  sleeps_left_ = kSleepsPerAnswer;
  Sleep();
}

void QtSerialPort::PickUp() {
  const std::string input = port_.readAll().toStdString();
  missing_ -= std::min(missing_, input.size());
  Sleep();  // first: what the input completes may expect something else, or close the port
  received_.Take(input);
}

void QtSerialPort::Sleep() {
  const std::chrono::milliseconds needed(missing_ * kBitsPerCharacter * 1000 / static_cast<std::size_t>(speed_));
  if (needed < kShortestSleep || sleeps_left_ == 0) return;
  --sleeps_left_;
  WatchInput(port_, false);
  wake_.start(needed);
}

void QtSerialPort::ExpectNothing() {
  missing_ = 0;
  if (!wake_.isActive()) return;
  wake_.stop();
  WatchInput(port_, true);
}

void QtSerialPort::HandleError(QSerialPort::SerialPortError error) {
  // The error belongs to an earlier opening and has been cleared.
  if (!port_.isOpen() || port_.error() == QSerialPort::NoError) return;
  if (error == QSerialPort::UnsupportedOperationError || error == QSerialPort::TimeoutError) return;
  const bool gone = !QFileInfo::exists(QString::fromStdString(device_));
  const Message reason =
      gone ? kPortVanished.With(device_) : kPortFailed.With(device_, port_.errorString().toStdString());
  port_.close();
  port_.clearError();
  // The reason first: the pending receive is about to report why no answer came.
  if (lost_) lost_(reason);
  Close();
}

}  // namespace orvalis
