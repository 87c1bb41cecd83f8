#include "platform/windows/serial_object_port.h"

#include <QByteArray>
#include <QDeadlineTimer>
#include <QUuid>
#include <chrono>
#include <sstream>
#include <utility>

#include "platform/windows/com_port.h"

namespace orvalis {
namespace {

/// How long opening a port may take, including the start of the process.
constexpr std::chrono::milliseconds kOpenPatience{15000};
/// How much longer than its own time-out the object may take.
constexpr std::chrono::milliseconds kReceiveGrace{3000};
/// How long a cancelled receive, or a process told to end, may go on before the process is killed.
constexpr std::chrono::milliseconds kReceiveLeft{500};
constexpr std::chrono::milliseconds kEndPatience{1000};

constexpr auto kNotNumbered = Message::Of("the serial ports are numbered; \"%1\" is not a number");
constexpr auto kNotResponding = Message::Of("the serial object of %1 is not responding");

std::string ToHex(const std::string& bytes) { return QByteArray::fromStdString(bytes).toHex().toStdString(); }

std::string FromHex(const std::string& hex) {
  return QByteArray::fromHex(QByteArray::fromStdString(hex)).toStdString();
}

/// The object accepts only a number.
std::string PortNumber(const std::string& port) {
  const std::string name = ComPortName(port);
  if (!name.starts_with("COM")) {
    throw RunTimeError(RunTimeError::kFileNotFound, kNotNumbered.With(name));
  }
  return name.substr(3);
}

}  // namespace

SerialObjectPort::SerialObjectPort(QString program) : program_(std::move(program)) {
  hung_.setSingleShot(true);
  connect(&hung_, &QTimer::timeout, this, [this] { Lose(kNotResponding.With(name_)); });
  StartProcess();
}

SerialObjectPort::~SerialObjectPort() {
  // Answers are no longer expected.
  receive_done_ = nullptr;
  if (connected_) Close();
  EndProcess(End::kInOrder);
}

void SerialObjectPort::StartProcess() {
  server_ = std::make_unique<QLocalServer>();
  server_->setSocketOptions(QLocalServer::UserAccessOption);
  const QString name = "orvalis-serial-" + QUuid::createUuid().toString(QUuid::WithoutBraces);
  server_->listen(name);
  connect(server_.get(), &QLocalServer::newConnection, this, [this] {
    if (socket_ != nullptr) return;
    socket_ = server_->nextPendingConnection();
    connect(socket_, &QLocalSocket::readyRead, this, &SerialObjectPort::TakeAnswers);
    socket_->write(QByteArray::fromStdString(std::exchange(unsent_, {})));
    socket_->flush();
  });
  process_ = std::make_unique<QProcess>();
  process_->setProcessChannelMode(QProcess::ForwardedChannels);
  connect(process_.get(), &QProcess::finished, this,
          [this] { Lose(Message::Of("the serial object of %1 has ended").With(name_)); });
  process_->start(program_, {kSerialObjectService, name});
}

void SerialObjectPort::EndProcess(End end) {
  open_calls_.clear();
  unsent_.clear();
  if (!process_) return;
  process_->disconnect(this);
  server_->disconnect(this);
  if (QLocalSocket* socket = std::exchange(socket_, nullptr)) {
    socket->disconnect(this);
    if (end == End::kInOrder) {
      socket->disconnectFromServer();
      process_->waitForFinished(static_cast<int>(kEndPatience.count()));
    }
  }
  if (process_->state() != QProcess::NotRunning) {
    process_->kill();
    process_->waitForFinished(static_cast<int>(kEndPatience.count()));
  }
  // Later: one of them may be the caller.
  server_.release()->deleteLater();
  process_.release()->deleteLater();
}

std::uint64_t SerialObjectPort::Ask(const std::string& operation, const std::string& argument, Answered answered) {
  if (!process_) StartProcess();
  const std::uint64_t call = ++last_call_;
  open_calls_.emplace(call, std::move(answered));
  const std::string line = std::to_string(call) + " " + operation + " " + ToHex(argument) + "\n";
  if (socket_ == nullptr) {
    unsent_ += line;
  } else {
    socket_->write(QByteArray::fromStdString(line));
    socket_->flush();
  }
  return call;
}

bool SerialObjectPort::WaitFor(std::uint64_t call, std::chrono::milliseconds patience) {
  const QDeadlineTimer end(patience);
  const auto left = [&] { return static_cast<int>(end.remainingTime()); };
  while (open_calls_.contains(call) && !end.hasExpired() && process_->state() != QProcess::NotRunning) {
    if (socket_ == nullptr) {
      server_->waitForNewConnection(left());
    } else if (!socket_->waitForReadyRead(left())) {
      break;
    }
  }
  return !open_calls_.contains(call);
}

void SerialObjectPort::TakeAnswers() {
  while (socket_ != nullptr && socket_->canReadLine()) {
    std::istringstream line(socket_->readLine().toStdString());
    std::uint64_t call = 0;
    Answer answer;
    int error = 0;
    std::string hex;
    line >> call >> answer.connected >> error >> hex;
    answer.text = FromHex(hex);
    if (error != 0) answer.error.emplace(static_cast<RunTimeError::Number>(error), answer.text);
    const auto found = open_calls_.find(call);
    if (found == open_calls_.end()) continue;
    const Answered answered = std::move(found->second);
    open_calls_.erase(found);
    if (answered) answered(answer);
  }
}

void SerialObjectPort::AskForOpening(const std::string& operation, const std::string& argument) {
  Ask(operation, argument, [this](const Answer& answer) {
    if (answer.error && !opening_error_) opening_error_ = answer.error;
  });
}

void SerialObjectPort::SetPort(const std::string& name) {
  const std::string number = PortNumber(name);
  name_ = "COM" + number;
  opening_error_.reset();
  AskForOpening("port", number);
}

void SerialObjectPort::SetSpeed(int bits_per_second) { AskForOpening("speed", std::to_string(bits_per_second)); }

void SerialObjectPort::SetReceiveTimeout(std::chrono::seconds time_out) {
  time_out_ = time_out;
  AskForOpening("time-out", std::to_string(time_out.count()));
}

void SerialObjectPort::SetConnected(bool connected) {
  if (connected == connected_) return;
  if (connected) {
    Open();
  } else {
    Close();
  }
}

void SerialObjectPort::Open() {
  const std::uint64_t call = Ask("connected", "1", [this](const Answer& answer) {
    if (answer.error && !opening_error_) opening_error_ = answer.error;
    connected_ = answer.connected && !opening_error_;
  });
  if (!WaitFor(call, kOpenPatience)) {
    EndProcess(End::kCutOff);
    throw RunTimeError(RunTimeError::kDeviceUnavailable, kNotResponding.With(name_));
  }
  if (connected_) return;
  const RunTimeError reason =
      opening_error_.value_or(RunTimeError(RunTimeError::kDeviceUnavailable, Message::Of("the object gave no reason")));
  throw RunTimeError(RunTimeError::kDeviceUnavailable, kPortCannotBeOpened.With(name_, reason.message()));
}

void SerialObjectPort::Close() {
  connected_ = false;
  hung_.stop();
  const ReceiveDone waiting = std::exchange(receive_done_, nullptr);
  if (process_ && !open_calls_.empty() && !WaitFor(last_call_, kReceiveLeft)) EndProcess(End::kCutOff);
  if (process_) Ask("connected", "0", {});
  if (waiting) waiting({Outcome::kClosed, {}});
}

void SerialObjectPort::ClearBuffers() {
  if (connected_) Ask("clear", {}, {});
}

void SerialObjectPort::Transmit(std::string_view bytes) {
  if (!connected_) throw RunTimeError(RunTimeError::kPortClosed, kPortNotOpen.With(name_));
  Ask("transmit", std::string(bytes), [this](const Answer& answer) {
    if (answer.error) Lose(kPortFailed.With(name_, answer.error->message()));
  });
}

void SerialObjectPort::ReceiveCounted(std::size_t count, ReceiveDone done) {
  BeginReceive("counted", std::to_string(count), std::move(done));
}

void SerialObjectPort::ReceiveTerminated(char terminator, ReceiveDone done) {
  BeginReceive("terminated", {terminator}, std::move(done));
}

void SerialObjectPort::BeginReceive(const std::string& operation, const std::string& argument, ReceiveDone done) {
  receive_done_ = std::move(done);
  hung_.start(std::chrono::milliseconds(time_out_) + kReceiveGrace);
  receive_call_ = last_call_ + 1;
  Ask(operation, argument, [this, call = receive_call_](const Answer& answer) {
    if (call != receive_call_ || !receive_done_) return;  // it was cancelled
    if (answer.error && !answer.connected) {
      Lose(kPortFailed.With(name_, answer.error->message()));
    } else {
      // The object does not return what came before a time-out.
      Finish({answer.error ? Outcome::kTimedOut : Outcome::kComplete, answer.error ? std::string() : answer.text});
    }
  });
}

void SerialObjectPort::CancelReceive() {
  // The object continues with it, and the next call waits for it.
  receive_done_ = nullptr;
  hung_.stop();
}

void SerialObjectPort::Finish(Received received) {
  hung_.stop();
  if (const ReceiveDone done = std::exchange(receive_done_, nullptr)) done(std::move(received));
}

void SerialObjectPort::Lose(const Message& reason) {
  const bool was_connected = std::exchange(connected_, false);
  EndProcess(End::kCutOff);
  // First, because the pending receive reports this reason.
  if (was_connected && lost_) lost_(reason);
  Finish({Outcome::kClosed, {}});
}

}  // namespace orvalis
