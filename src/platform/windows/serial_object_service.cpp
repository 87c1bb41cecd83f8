// The process of the driver platform's serial object.

#include <QByteArray>
#include <QCoreApplication>
#include <QLocalSocket>
#include <exception>
#include <functional>
#include <map>
#include <optional>
#include <sstream>
#include <string>

#include "base/text.h"
#include "platform/windows/driver_objects.h"
#include "platform/windows/serial_object_port.h"

namespace orvalis {
namespace {

/// In the object's texts each byte of the line is the character with its number.
std::string TextOfBytes(const std::string& bytes) { return QString::fromLatin1(bytes).toStdString(); }
std::string BytesOfText(const std::string& text) { return QString::fromStdString(text).toLatin1().toStdString(); }

class SerialObject {
 public:
  /// Makes one call and returns its result. Throws RunTimeError.
  std::string Carry(const std::string& operation, const std::string& argument) {
    if (!object_) object_.emplace(kDriverSerial);
    const auto found = operations_.find(operation);
    return found == operations_.end() ? std::string() : found->second(argument);
  }

  [[nodiscard]] bool Connected() {
    try {
      return object_ && object_->Get("Connected").Flag();
    } catch (const RunTimeError&) {
      return false;
    }
  }

 private:
  using Operation = std::function<std::string(const std::string& argument)>;

  Operation PutNumber(const char* property) {
    return [this, property](const std::string& argument) {
      object_->Put(property, TextToInteger(argument));
      return std::string();
    };
  }

  std::optional<AutomationObject> object_;
  const std::map<std::string, Operation> operations_{
      {"port", PutNumber("Port")},
      {"speed", PutNumber("Speed")},
      {"time-out", PutNumber("ReceiveTimeout")},
      {"connected",
       [this](const std::string& argument) {
         object_->Put("Connected", argument == "1");
         return std::string();
       }},
      {"clear",
       [this](const std::string&) {
         object_->Call("ClearBuffers");
         return std::string();
       }},
      {"transmit",
       [this](const std::string& argument) {
         object_->Call("Transmit", {TextOfBytes(argument)});
         return std::string();
       }},
      {"counted",
       [this](const std::string& argument) {
         return BytesOfText(object_->Call("ReceiveCounted", {TextToInteger(argument)}).Text());
       }},
      {"terminated",
       [this](const std::string& argument) {
         return BytesOfText(object_->Call("ReceiveTerminated", {TextOfBytes(argument)}).Text());
       }},
  };
};

void Answer(QLocalSocket& socket, SerialObject& object) {
  std::istringstream line(socket.readLine().toStdString());
  std::string call;
  std::string operation;
  std::string hex;
  line >> call >> operation >> hex;
  int error = 0;
  std::string text;
  try {
    text = object.Carry(operation, QByteArray::fromHex(QByteArray::fromStdString(hex)).toStdString());
  } catch (const RunTimeError& failure) {
    error = failure.number();
    text = failure.what();
  }
  // After a success the object is connected where that matters; a failure may have disconnected it.
  const bool connected = error == 0 ? operation != "connected" || object.Connected() : object.Connected();
  socket.write(QByteArray::fromStdString(call + (connected ? " 1 " : " 0 ") + std::to_string(error) + " ") +
               QByteArray::fromStdString(text).toHex() + "\n");
  socket.flush();
}

}  // namespace

int RunSerialObject(const std::string& socket_name) {
  int argc = 1;
  std::string name = "orvalis";
  char* argv[] = {name.data(), nullptr};
  const QCoreApplication application(argc, argv);
  try {
    const ComApartment apartment;
    SerialObject object;
    QLocalSocket socket;
    QObject::connect(&socket, &QLocalSocket::disconnected, &application, [] { QCoreApplication::exit(0); });
    QObject::connect(&socket, &QLocalSocket::readyRead, &socket, [&] {
      while (socket.canReadLine()) Answer(socket, object);
    });
    constexpr int kConnectPatienceMs = 5000;
    socket.connectToServer(QString::fromStdString(socket_name));
    if (!socket.waitForConnected(kConnectPatienceMs)) return 1;
    return QCoreApplication::exec();
  } catch (const std::exception&) {
    return 1;  // the program notices that this process has ended
  }
}

}  // namespace orvalis
