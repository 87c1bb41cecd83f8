#include "platform/linux/dbus/weather_service.h"

#include <QDBusError>
#include <QDBusVariant>
#include <QVariant>
#include <chrono>
#include <stdexcept>
#include <utility>

#include "base/run_time_error.h"
#include "platform/linux/dbus/bus_life.h"
#include "platform/linux/dbus/observation_interface.h"

namespace orvalis {
namespace {

const QString kService = QStringLiteral("org.orvalis.Weather");
const QString kPath = QStringLiteral("/org/orvalis/Weather");
const QString kInterface = QStringLiteral("org.orvalis.Weather");
const QString kErrorPrefix = QStringLiteral("org.orvalis.Weather.Error.");
const QString kProperties = QStringLiteral("org.freedesktop.DBus.Properties");
const QString kBus = QStringLiteral("org.freedesktop.DBus");
const QString kBusObject = QStringLiteral("/org/freedesktop/DBus");
const QString kConnectionName = QStringLiteral("orvalis-weather");
constexpr std::chrono::minutes kRetry{1};
/// For the bus's first word: at the start a busy machine may be slow, later the readings wait meanwhile.
constexpr std::chrono::seconds kPatienceAtStart{5};
constexpr std::chrono::seconds kPatience{1};

/// One of the bus's own errors.
class BusError : public std::runtime_error {
 public:
  BusError(QDBusError::ErrorType type, const std::string& text) : std::runtime_error(text), type_(type) {}
  [[nodiscard]] QDBusError::ErrorType type() const { return type_; }

 private:
  QDBusError::ErrorType type_;
};

/// A type's letter on the bus, and which variant holds it. A single is a double there, after the narrowing.
struct BusType {
  WeatherType type;
  const char* signature;
  QMetaType::Type variant;
};
constexpr std::array kBusTypes = {
    BusType{WeatherType::kBoolean, "b", QMetaType::Bool}, BusType{WeatherType::kLong, "i", QMetaType::Int},
    BusType{WeatherType::kSingle, "d", QMetaType::Double}, BusType{WeatherType::kDouble, "d", QMetaType::Double},
    BusType{WeatherType::kString, "s", QMetaType::QString}};

const BusType& BusTypeOf(const WeatherMemberInfo& property) {
  for (const BusType& type : kBusTypes) {
    if (type.type == property.type) return type;
  }
  throw std::logic_error("a method has no type on the bus");
}

QVariant ToVariant(const WeatherValue& value) {
  struct Convert {
    QVariant operator()(bool flag) const { return flag; }
    QVariant operator()(std::int32_t number) const { return number; }
    QVariant operator()(float number) const { return static_cast<double>(number); }
    QVariant operator()(double number) const { return number; }
    QVariant operator()(const std::string& text) const { return QString::fromStdString(text); }
  };
  return std::visit(Convert{}, value);
}

bool IsProperty(const WeatherMemberInfo& member) { return member.type != WeatherType::kNone; }

const WeatherMemberInfo* Find(const QString& name, bool property) {
  for (const WeatherMemberInfo& member : WeatherMembers()) {
    if (QLatin1String(member.name.data(), static_cast<int>(member.name.size())) == name &&
        IsProperty(member) == property) {
      return &member;
    }
  }
  return nullptr;
}

const WeatherMemberInfo& FindProperty(const QString& name) {
  if (const WeatherMemberInfo* const property = Find(name, true)) return *property;
  throw BusError(QDBusError::UnknownProperty, "there is no property " + name.toStdString());
}

void ExpectSignature(const QDBusMessage& call, const char* signature) {
  if (call.signature() == QLatin1String(signature)) return;
  throw BusError(QDBusError::InvalidArgs, call.member().toStdString() + " takes (" + signature + "), not (" +
                                              call.signature().toStdString() + ")");
}

/// What the bus itself answers. Qt's own functions would wait half a minute for it, and the readings with them.
QDBusMessage AskBus(const QDBusConnection& bus, const QString& method, const QVariantList& arguments) {
  constexpr int kLongest = 2'000;  // ms
  QDBusMessage question = QDBusMessage::createMethodCall(kBus, kBusObject, kBus, method);
  question.setArguments(arguments);
  return bus.call(question, QDBus::Block, kLongest);
}

/// Why this program cannot have its name on `bus`; empty when it has it.
std::string RequestName(const QDBusConnection& bus) {
  constexpr uint kDoNotQueue = 4;
  constexpr uint kOwner = 1;
  constexpr uint kAlreadyOwner = 4;
  const QDBusMessage answer = AskBus(bus, QStringLiteral("RequestName"), {kService, kDoNotQueue});
  if (answer.type() != QDBusMessage::ReplyMessage) {
    return "the bus does not give it its name: " + answer.errorMessage().toStdString();
  }
  const uint code = answer.arguments().value(0).toUInt();
  if (code == kOwner || code == kAlreadyOwner) return {};
  return "another program owns the name " + kService.toStdString();
}

}  // namespace

WeatherService::WeatherService(Parts parts) : parts_(std::move(parts)) {
  retry_.setSingleShot(true);
  retry_.setInterval(kRetry);
  QObject::connect(&retry_, &QTimer::timeout, this, &WeatherService::Start);
}

WeatherService::~WeatherService() {
  announcements_.reset();
  if (bus_) QDBusConnection::disconnectFromBus(kConnectionName);
}

bool WeatherService::Start() {
  const std::string problem = TakeName();
  if (problem.empty()) {
    has_name_ = true;
    if (trouble_.Mended()) parts_.record("clients can use the D-Bus interface again");
    return true;
  }
  TryAgain(problem);
  return false;
}

std::string WeatherService::TakeName() {
  if (!bus_) {
    const QString address = SessionBusAddress();
    if (address.isEmpty()) return "no session bus";
    if (!BusAnswers(address, std::exchange(started_, true) ? kPatience : kPatienceAtStart))
      return "the session bus does not answer";
    QDBusConnection bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, kConnectionName);
    if (!bus.isConnected()) {
      const std::string reason = bus.lastError().message().toStdString();
      QDBusConnection::disconnectFromBus(kConnectionName);
      return "cannot connect to the session bus: " + reason;
    }
    // One match rule for all clients, installed before the first can call, so that one that calls and leaves is
    // noticed.
    bus.connect(kBus, kBusObject, kBus, QStringLiteral("NameOwnerChanged"), this,
                SLOT(NoteNameOwner(QString, QString, QString)));
    bus.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"), QStringLiteral("org.freedesktop.DBus.Local"),
                QStringLiteral("Disconnected"), this, SLOT(NoteDisconnected()));
    bus.registerVirtualObject(kPath, this);
    bus_ = bus;
    announcements_ = std::make_unique<Announcements>(bus, kPath, parts_.observation);
  }
  return RequestName(*bus_);
}

void WeatherService::TryAgain(const std::string& reason) {
  if (trouble_.IsNews(reason)) parts_.record("clients cannot use the D-Bus interface: " + reason);
  retry_.start();
}

void WeatherService::NoteDisconnected() {
  QDBusConnection::disconnectFromBus(kConnectionName);
  has_name_ = false;
  announcements_.reset();
  bus_.reset();
  clients_.clear();
  TryAgain("session bus lost");
}

void WeatherService::NoteNameOwner(const QString& name, const QString& /*previous*/, const QString& current) {
  if (current.isEmpty() && clients_.contains(name)) EndClient(name);
}

void WeatherService::EndClient(const QString& client) {
  if (!parts_.ends_with_last_client || clients_.size() > 1) {
    clients_.erase(client);
    return;
  }
  // The program is about to end. It gives its name away first: a client that comes now lets the bus start a new
  // program, and one whose call has come already is served by this one.
  AskBus(*bus_, QStringLiteral("ReleaseName"), {kService});
  has_name_ = false;
  QTimer::singleShot(0, this, [this, client] {
    const bool others_came = clients_.size() > 1;
    clients_.erase(client);
    if (others_came) Start();
  });
}

QString WeatherService::introspect(const QString& path) const {
  if (path != kPath) return {};
  QString xml = "  <interface name=\"" + kInterface + "\">\n";
  for (const WeatherMemberInfo& member : WeatherMembers()) {
    const QString name = QString::fromUtf8(member.name.data(), static_cast<qsizetype>(member.name.size()));
    if (!IsProperty(member)) {
      xml += "    <method name=\"" + name + "\"/>\n";
      continue;
    }
    xml += "    <property name=\"" + name + "\" type=\"" + BusTypeOf(member).signature + "\" access=\"" +
           (member.writable ? "readwrite" : "read") +
           "\">\n"
           "      <annotation name=\"org.freedesktop.DBus.Property.EmitsChangedSignal\" value=\"false\"/>\n"
           "    </property>\n";
  }
  return xml + "  </interface>\n" + IntrospectObservation();
}

bool WeatherService::handleMessage(const QDBusMessage& message, const QDBusConnection& /*connection*/) {
  if (message.type() != QDBusMessage::MethodCallMessage || message.path() != kPath) return false;
  const QString interface = message.interface();
  // Introspection and pings are the library's.
  if (interface.startsWith("org.freedesktop.DBus.") && interface != kProperties) return false;
  try {
    Handle(message);
  } catch (...) {
    AnswerError(message, std::current_exception());
  }
  return true;
}

void WeatherService::Handle(const QDBusMessage& call) {
  const QString interface = call.interface();
  if (interface == kProperties) return HandleProperties(call);
  if (interface == kInterface || interface.isEmpty()) return HandleMethod(call);
  throw BusError(QDBusError::UnknownInterface, "there is no interface " + interface.toStdString());
}

void WeatherService::HandleProperties(const QDBusMessage& call) {
  const QString member = call.member();
  const bool is_get = member == "Get";
  const bool is_set = member == "Set";
  if (!is_get && !is_set && member != "GetAll") {
    throw BusError(QDBusError::UnknownMethod, "there is no method " + member.toStdString());
  }
  ExpectSignature(call, is_get ? "ss" : is_set ? "ssv" : "s");
  const QVariantList arguments = call.arguments();
  const QString interface = arguments[0].toString();
  if (interface == kObservationInterface) return ReadObservation(call, is_set);
  if (interface != kInterface && !interface.isEmpty()) {
    throw BusError(QDBusError::UnknownInterface, "there is no interface " + interface.toStdString());
  }
  if (is_get) {
    const WeatherMemberInfo& property = FindProperty(arguments[1].toString());
    const QVariant value = ToVariant(ObjectOf(call).Get(property.member));
    Answer(call, {QVariant::fromValue(QDBusVariant(value))});
  } else if (is_set) {
    Set(call, FindProperty(arguments[1].toString()), qvariant_cast<QDBusVariant>(arguments[2]).variant());
  } else {
    Answer(call, {All(ObjectOf(call))});
  }
}

void WeatherService::ReadObservation(const QDBusMessage& call, bool is_set) {
  const bool is_all = call.member() == "GetAll";
  const QString name = is_all ? QString() : call.arguments()[1].toString();
  const ObservationMember* const member = FindObservationMember(name);
  if (member == nullptr && !is_all) {
    throw BusError(QDBusError::UnknownProperty, "there is no property " + name.toStdString());
  }
  if (is_set) throw BusError(QDBusError::PropertyReadOnly, name.toStdString() + " can only be read");
  const Weather& client = ObjectOf(call);  // whoever reads is one
  const Observation& now = parts_.observation.Look(is_all ? "" : member->name, client.caller());
  Answer(call, {is_all ? QVariant(BusValues(now)) : QVariant::fromValue(QDBusVariant(BusValue(*member, now)))});
}

void WeatherService::Announce(const Observation& now, const Observer::News& news) {
  // Another program may have the name: a listener must not take this one's word for its.
  if (has_name_) announcements_->Note(now, news);
}

void WeatherService::Set(const QDBusMessage& call, const WeatherMemberInfo& property, const QVariant& value) {
  if (!property.writable) {
    throw BusError(QDBusError::PropertyReadOnly, std::string(property.name) + " can only be read");
  }
  if (value.metaType().id() != BusTypeOf(property).variant) {
    throw BusError(QDBusError::InvalidArgs,
                   std::string(property.name) + " has the type " + BusTypeOf(property).signature);
  }
  ObjectOf(call).SetConnected(value.toBool(), LaterAnswer(call));
}

QVariantMap WeatherService::All(const Weather& object) const {
  QVariantMap values;
  for (const WeatherMemberInfo& member : WeatherMembers()) {
    if (!IsProperty(member)) continue;
    try {
      const QString name = QString::fromUtf8(member.name.data(), static_cast<qsizetype>(member.name.size()));
      values.insert(name, ToVariant(object.Get(member.member)));
    } catch (const AutomationError&) {
      // GetAll returns what can be read.
    } catch (const RunTimeError&) {
      // The same.
    }
  }
  return values;
}

void WeatherService::HandleMethod(const QDBusMessage& call) {
  const WeatherMemberInfo* const method = Find(call.member(), false);
  if (method == nullptr) {
    throw BusError(QDBusError::UnknownMethod, "there is no method " + call.member().toStdString());
  }
  ExpectSignature(call, "");
  Weather& object = ObjectOf(call);
  if (method->member == WeatherMember::kSetupDialog) return object.SetupDialog(LaterAnswer(call));
  object.Halt();
  Answer(call);
}

Weather& WeatherService::ObjectOf(const QDBusMessage& call) {
  std::unique_ptr<Weather>& object = clients_[call.service()];
  if (!object) {
    try {
      object = parts_.create("D-Bus " + call.service().toStdString());
      had_clients_ = true;
    } catch (...) {
      clients_.erase(call.service());
      throw;
    }
  }
  return *object;
}

void WeatherService::Answer(const QDBusMessage& call, const QVariantList& values) const {
  if (call.isReplyRequired() && bus_) bus_->send(call.createReply(values));
}

void WeatherService::AnswerError(const QDBusMessage& call, const std::exception_ptr& error) const {
  if (!call.isReplyRequired() || !bus_) return;
  const auto reply = [&](const QString& name, const char* text) {
    bus_->send(call.createErrorReply(name, QString::fromUtf8(text)));
  };
  try {
    std::rethrow_exception(error);
  } catch (const BusError& raised) {
    reply(QDBusError::errorString(raised.type()), raised.what());
  } catch (const AutomationError& raised) {
    reply(kErrorPrefix + (raised.number() == ErrNotConnected ? "NotConnected" : "NotImplemented"), raised.what());
  } catch (const std::exception& raised) {
    reply(kErrorPrefix + "RunTime", raised.what());
  }
}

Weather::Done WeatherService::LaterAnswer(const QDBusMessage& call) const {
  return [this, call](const std::exception_ptr& error) { error ? AnswerError(call, error) : Answer(call); };
}

}  // namespace orvalis
