#include "platform/qt/mosquitto_client.h"

#include <mosquitto.h>
#include <mqtt_protocol.h>

#include <QMetaObject>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <deque>
#include <system_error>
#include <thread>
#include <utility>

#include "platform/system/broker_socket.h"

namespace orvalis {

using network::MqttAccess;
using network::MqttFailure;
using network::MqttMessage;
using network::MqttTrouble;

namespace {

/// The broker takes a program for lost after half as much again.
constexpr int kKeepAlive = 10;  // seconds
/// How often the library looks whether a sign of life is due: the readings are one, every two seconds.
constexpr std::chrono::seconds kUpkeep{4};
constexpr std::chrono::seconds kLookUpPatience{20};
constexpr std::chrono::seconds kAcceptPatience{10};
constexpr std::chrono::seconds kLeavePatience{1};
/// Threads that hang, such as in a look-up without an answer.
constexpr int kMostThreads = 4;
/// Nobody has anything longer to tell us.
constexpr std::uint32_t kLongestPacket = 65'536;  // bytes
constexpr std::size_t kLongestPayload = 4'096;    // bytes
/// Reasons of the protocol from here on are failures.
constexpr int kFirstFailure = 128;

std::atomic<int> threads_connecting{0};

struct Destroy {
  void operator()(mosquitto* client) const { mosquitto_destroy(client); }
};
using Handle = std::unique_ptr<mosquitto, Destroy>;

/// Properties of MQTT 5, freed by themselves.
class Properties {
 public:
  Properties() = default;
  Properties(const Properties&) = delete;
  Properties& operator=(const Properties&) = delete;
  ~Properties() { mosquitto_property_free_all(&list_); }

  void Add(int identifier, std::uint32_t value) { mosquitto_property_add_int32(&list_, identifier, value); }
  [[nodiscard]] const mosquitto_property* list() const { return list_; }

 private:
  mosquitto_property* list_ = nullptr;
};

int Qos(const MqttMessage& message) { return message.lasting ? 1 : 0; }

/// What the library is told before it connects. Returns its code.
int Prepare(mosquitto* client, const MqttAccess& access, int version) {
  mosquitto_int_option(client, MOSQ_OPT_PROTOCOL_VERSION, version);
  mosquitto_int_option(client, MOSQ_OPT_TCP_NODELAY, 1);
  // It sends nothing by itself then, so that no password leaves before it is known who is at the other end.
  mosquitto_threaded_set(client, true);
  if (!access.user.empty()) {
    const char* const password = access.password.empty() ? nullptr : access.password.c_str();
    if (const int code = mosquitto_username_pw_set(client, access.user.c_str(), password)) return code;
  }
  if (access.will) {
    const std::string& payload = access.will->payload;
    const int code = mosquitto_will_set(client, access.will->topic.c_str(), static_cast<int>(payload.size()),
                                        payload.data(), Qos(*access.will), access.will->lasting);
    if (code != MOSQ_ERR_SUCCESS) return code;
  }
  if (!access.tls) return MOSQ_ERR_SUCCESS;
  if (access.ca_file.empty()) return mosquitto_int_option(client, MOSQ_OPT_TLS_USE_OS_CERTS, 1);
  return mosquitto_tls_set(client, access.ca_file.c_str(), nullptr, nullptr, nullptr, nullptr);
}

/// A refusal of the broker, in the numbers of either version.
MqttTrouble Refusal(int reason) {
  switch (reason) {
    case CONNACK_REFUSED_BAD_USERNAME_PASSWORD:
    case CONNACK_REFUSED_NOT_AUTHORIZED:
    case MQTT_RC_BAD_USERNAME_OR_PASSWORD:
    case MQTT_RC_NOT_AUTHORIZED:
      return {.failure = MqttFailure::kBadLogin};
    default:
      return {.failure = MqttFailure::kRefused,
              .detail = reason < kFirstFailure ? mosquitto_connack_string(reason) : mosquitto_reason_string(reason)};
  }
}

bool IsUnknownVersion(int reason) {
  return reason == CONNACK_REFUSED_PROTOCOL_VERSION || reason == MQTT_RC_UNSUPPORTED_PROTOCOL_VERSION;
}

}  // namespace

struct MosquittoClient::Event {
  enum class Kind : std::uint8_t { kAccepted, kMessage, kAnswered, kOldVersion, kFailed };
  Kind kind;
  std::string topic = {};
  std::string payload = {};
  MqttTrouble trouble = {};
  int question = 0;
};

struct MosquittoClient::Line {
  using Kind = Event::Kind;

  MqttAccess access;
  int version = 0;
  Handle handle;
  int code = MOSQ_ERR_SUCCESS;  ///< of the library, for making the connection
  int system_error = 0;         ///< where the code says that there is one
  std::string errors;           ///< what the library said of them
  std::deque<Event> events;     ///< to be told when the library has done its work

  void Open();
  void Listen();
  [[nodiscard]] MqttTrouble TroubleOf(int failed, int error) const;
};

void MosquittoClient::Line::Open() {
  handle.reset(mosquitto_new(access.client_id.c_str(), true, this));
  if (!handle) {
    code = MOSQ_ERR_NOMEM;
    return;
  }
  Listen();
  code = Prepare(handle.get(), access, version);
  if (code != MOSQ_ERR_SUCCESS) return;
  Properties properties;
  if (version == MQTT_PROTOCOL_V5) properties.Add(MQTT_PROP_MAXIMUM_PACKET_SIZE, kLongestPacket);
  errno = 0;
  code =
      mosquitto_connect_bind_v5(handle.get(), access.host.c_str(), access.port, kKeepAlive, nullptr, properties.list());
  system_error = errno;
}

void MosquittoClient::Line::Listen() {
  mosquitto_log_callback_set(handle.get(), [](mosquitto*, void* line, int level, const char* text) {
    constexpr std::size_t kEnough = 2'000;
    std::string& errors = static_cast<Line*>(line)->errors;
    if (level == MOSQ_LOG_ERR && errors.size() < kEnough) errors += std::string(text) + "\n";
  });
  mosquitto_connect_v5_callback_set(handle.get(),
                                    [](mosquitto*, void* line, int reason, int, const mosquitto_property*) {
                                      auto& events = static_cast<Line*>(line)->events;
                                      if (reason == 0) {
                                        events.push_back({.kind = Kind::kAccepted});
                                      } else if (IsUnknownVersion(reason)) {
                                        events.push_back({.kind = Kind::kOldVersion});
                                      } else {
                                        events.push_back({.kind = Kind::kFailed, .trouble = Refusal(reason)});
                                      }
                                    });
  mosquitto_disconnect_v5_callback_set(handle.get(), [](mosquitto*, void* line, int reason, const mosquitto_property*) {
    if (reason < kFirstFailure) return;  // the library's own codes, which it returns too
    MqttTrouble trouble = Refusal(reason);
    if (reason == MQTT_RC_SESSION_TAKEN_OVER) {
      trouble = {.failure = MqttFailure::kOther,
                 .detail = "another program with the same profile or a copy of it has taken the connection over"};
    }
    static_cast<Line*>(line)->events.push_back({.kind = Kind::kFailed, .trouble = std::move(trouble)});
  });
  mosquitto_message_callback_set(handle.get(), [](mosquitto*, void* line, const mosquitto_message* message) {
    if (message->payloadlen < 0 || static_cast<std::size_t>(message->payloadlen) > kLongestPayload) return;
    static_cast<Line*>(line)->events.push_back({.kind = Kind::kMessage,
                                                .topic = message->topic,
                                                .payload = std::string(static_cast<const char*>(message->payload),
                                                                       static_cast<std::size_t>(message->payloadlen))});
  });
  mosquitto_unsubscribe_callback_set(handle.get(), [](mosquitto*, void* line, int question) {
    static_cast<Line*>(line)->events.push_back({.kind = Kind::kAnswered, .question = question});
  });
  mosquitto_publish_v5_callback_set(
      handle.get(), [](mosquitto*, void* line, int, int reason, const mosquitto_property*) {
        if (reason < kFirstFailure) return;
        MqttTrouble trouble = Refusal(reason);
        if (reason == MQTT_RC_NOT_AUTHORIZED) trouble = {.failure = MqttFailure::kNotPermitted};
        static_cast<Line*>(line)->events.push_back({.kind = Kind::kFailed, .trouble = std::move(trouble)});
      });
}

MqttTrouble MosquittoClient::Line::TroubleOf(int failed, int error) const {
  const auto said = [this](std::string_view what) { return errors.find(what) != std::string::npos; };
  switch (failed) {
    case MOSQ_ERR_EAI:
      return {.failure = MqttFailure::kNameNotFound};
    case MOSQ_ERR_NOT_SUPPORTED:
      return {.failure = access.tls ? MqttFailure::kNoTlsHere : MqttFailure::kOther,
              .detail = mosquitto_strerror(failed)};
    case MOSQ_ERR_INVAL:
      return {.failure = access.tls && !access.ca_file.empty() ? MqttFailure::kCaFile : MqttFailure::kOther,
              .detail = "the broker's host or the user name cannot be used"};
    case MOSQ_ERR_TLS:
      if (said("Unable to load CA")) return {.failure = MqttFailure::kCaFile};
      if (said("host name verification failed")) return {.failure = MqttFailure::kWrongName};
      if (said("certificate verify failed")) return {.failure = MqttFailure::kCertificate};
      {
        const std::string first = errors.substr(0, errors.find('\n'));
        return {.failure = MqttFailure::kNoTlsThere, .detail = first.substr(first.rfind(':') + 1)};
      }
    case MOSQ_ERR_CONN_LOST:
      return {.failure = MqttFailure::kClosed};
    case MOSQ_ERR_KEEPALIVE:
      return {.failure = MqttFailure::kNoAnswer};
    case MOSQ_ERR_ERRNO:
      return {.failure = MqttFailure::kUnreachable, .detail = std::system_category().message(error)};
    case MOSQ_ERR_PROTOCOL:
    case MOSQ_ERR_MALFORMED_PACKET:
    case MOSQ_ERR_MALFORMED_UTF8:
      return {.failure = MqttFailure::kRefused, .detail = "what it says is not MQTT"};
    default:
      return {.failure = MqttFailure::kOther, .detail = mosquitto_strerror(failed)};
  }
}

void MosquittoClient::Mailbox::Deliver(const std::shared_ptr<Line>& line) {
  const std::lock_guard lock(mutex_);
  if (client_ == nullptr) return;
  QMetaObject::invokeMethod(
      client_, [client = client_, line] { client->Opened(line); }, Qt::QueuedConnection);
}

void MosquittoClient::Mailbox::Close() {
  const std::lock_guard lock(mutex_);
  client_ = nullptr;
}

MosquittoClient::MosquittoClient() : mailbox_(std::make_shared<Mailbox>(this)) {
  upkeep_timer_.setInterval(kUpkeep);
  connect(&upkeep_timer_, &QTimer::timeout, this, &MosquittoClient::KeepUp);
  patience_timer_.setSingleShot(true);
  connect(&patience_timer_, &QTimer::timeout, this, [this] {
    if (leaving_) {
      Leave();
    } else {
      Fail({.failure = MqttFailure::kNoAnswer});
    }
  });
}

MosquittoClient::~MosquittoClient() {
  mailbox_->Close();
  connect_next_ = false;
  if (leaving_) Leave();
  Forget();
}

bool MosquittoClient::HasTls() {
  const Handle client(mosquitto_new(nullptr, true, nullptr));
  return client && mosquitto_int_option(client.get(), MOSQ_OPT_TLS_USE_OS_CERTS, 1) == MOSQ_ERR_SUCCESS;
}

bool MosquittoClient::LeavesThread() { return threads_connecting > 0; }

mosquitto* MosquittoClient::handle() const { return line_->handle.get(); }

void MosquittoClient::Connect(const MqttAccess& access, User& user) {
  if (!leaving_) Forget();
  access_ = access;
  user_ = &user;
  // Before the broker has taken the last words of the old connection, the new one would end it without them.
  connect_next_ = leaving_;
  if (!leaving_) Begin(MQTT_PROTOCOL_V5);
}

void MosquittoClient::Begin(int version) {
  // Before there is a second thread.
  [[maybe_unused]] static const int ready = mosquitto_lib_init();
  version_ = version;
  patience_timer_.start(kLookUpPatience);
  line_ = std::make_shared<Line>();
  line_->access = access_;
  line_->version = version;
  if (threads_connecting >= kMostThreads) return;  // the patience ends it
  ++threads_connecting;
  std::thread([mailbox = mailbox_, line = line_]() mutable {
    line->Open();
    mailbox->Deliver(line);
    line.reset();  // where nobody wants it any more it ends here
    --threads_connecting;
  }).detach();
}

void MosquittoClient::Opened(const std::shared_ptr<Line>& line) {
  if (line != line_) return;
  if (line->code != MOSQ_ERR_SUCCESS) {
    Fail(line->TroubleOf(line->code, line->system_error));
    return;
  }
  const int socket = mosquitto_socket(handle());
  KeepFromChildren(socket);
  const bool has_password = !access_.user.empty() && !access_.password.empty();
  const bool in_the_clear = has_password && !access_.tls && !access_.allow_plain_password;
  if (in_the_clear && !PeerOf(socket).isLoopback()) {
    Fail({.failure = MqttFailure::kPlainPassword});
    return;
  }
  DropUnsentAtClose(socket, true);
  readable_ = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Read);
  writable_ = std::make_unique<QSocketNotifier>(socket, QSocketNotifier::Write);
  connect(readable_.get(), &QSocketNotifier::activated, this, &MosquittoClient::Readable);
  connect(writable_.get(), &QSocketNotifier::activated, this, &MosquittoClient::Writable);
  patience_timer_.start(kAcceptPatience);
  upkeep_timer_.start();
  Watch();
}

void MosquittoClient::Drive(const std::function<int(mosquitto*)>& work) {
  const std::shared_ptr<Line> line = line_;  // the user may end it meanwhile
  errno = 0;
  const int code = work(line->handle.get());
  const int error = errno;
  for (; !line->events.empty() && line == line_; line->events.pop_front()) {
    const Event event = line->events.front();
    if (leaving_) {
      FollowLeaving(event);
    } else {
      Tell(event);
    }
  }
  if (line != line_) return;
  if (code != MOSQ_ERR_SUCCESS) {
    MqttTrouble trouble = line->TroubleOf(code, error);
    // It was reached.
    if (trouble.failure == MqttFailure::kUnreachable) trouble.failure = MqttFailure::kClosed;
    Fail(trouble);
  } else if (mosquitto_socket(handle()) < 0) {
    Fail({.failure = MqttFailure::kClosed});
  } else {
    Watch();
  }
}

void MosquittoClient::Tell(const Event& event) {
  switch (event.kind) {
    case Event::Kind::kAccepted:
      accepted_ = true;
      patience_timer_.stop();
      user_->Connected();
      break;
    case Event::Kind::kMessage:
      user_->Received(event.topic, event.payload);
      break;
    case Event::Kind::kAnswered:
      if (event.question == asked_) user_->Answered();
      break;
    case Event::Kind::kOldVersion:
      Fail({.failure = MqttFailure::kClosed});
      break;
    case Event::Kind::kFailed:
      Fail(event.trouble);
      break;
  }
}

void MosquittoClient::FollowLeaving(const Event& event) {
  if (event.kind == Event::Kind::kAnswered && event.question == asked_) Leave();
}

void MosquittoClient::Readable() {
  // The library does not see a line that ends while it agrees on the encryption.
  if (!accepted_ && HasEnded(mosquitto_socket(handle()))) {
    Fail({.failure = MqttFailure::kClosed});
    return;
  }
  Drive([](mosquitto* client) { return mosquitto_loop_read(client, 1); });
}

void MosquittoClient::Writable() {
  Drive([this](mosquitto* client) {
    const int code = mosquitto_loop_write(client, 1);
    // Agreeing on the encryption goes on in the library's reading.
    return code == MOSQ_ERR_SUCCESS && access_.tls && !accepted_ ? mosquitto_loop_read(client, 1) : code;
  });
}

void MosquittoClient::KeepUp() { Drive(mosquitto_loop_misc); }

void MosquittoClient::Watch() { writable_->setEnabled(mosquitto_want_write(handle())); }

void MosquittoClient::Subscribe(const std::string& topic) {
  if (!accepted_ || leaving_) return;
  mosquitto_subscribe(handle(), nullptr, topic.c_str(), 1);
  Watch();
}

void MosquittoClient::Send(const MqttMessage& message) {
  if (!accepted_ || leaving_) return;
  Properties properties;
  if (version_ == MQTT_PROTOCOL_V5 && !message.lasting) {
    properties.Add(MQTT_PROP_MESSAGE_EXPIRY_INTERVAL, static_cast<std::uint32_t>(network::kMqttExpiry.count()));
  }
  const int code =
      mosquitto_publish_v5(handle(), nullptr, message.topic.c_str(), static_cast<int>(message.payload.size()),
                           message.payload.data(), Qos(message), message.lasting, properties.list());
  if (code != MOSQ_ERR_SUCCESS && code != MOSQ_ERR_NO_CONN) {
    line_->events.push_back({.kind = Event::Kind::kFailed, .trouble = line_->TroubleOf(code, errno)});
    QMetaObject::invokeMethod(
        this,
        [this, line = line_] {
          if (line == line_) KeepUp();
        },
        Qt::QueuedConnection);
  }
  Watch();
}

void MosquittoClient::Ask() {
  if (!accepted_ || leaving_) return;
  // Any broker has to answer this, whatever it permits, and it changes nothing.
  mosquitto_unsubscribe(handle(), &asked_, (access_.client_id + "/ask").c_str());
  Watch();
}

void MosquittoClient::Close() {
  connect_next_ = false;
  if (leaving_) return;
  if (!accepted_) {
    Forget();
    return;
  }
  // While answers are under way the system would not end the connection in order, and the broker would give the will.
  Ask();
  leaving_ = true;
  patience_timer_.start(kLeavePatience);
}

void MosquittoClient::Abort() {
  connect_next_ = false;
  if (!leaving_) Forget();
}

void MosquittoClient::Leave() {
  const std::shared_ptr<Line> line = line_;
  mosquitto* const client = line->handle.get();
  const int socket = mosquitto_socket(client);
  if (socket >= 0) {
    mosquitto_disconnect(client);
    DropUnsentAtClose(socket, false);
    mosquitto_loop_write(client, 1);
    // It takes nothing any more: what waits would arrive late.
    if (mosquitto_socket(client) >= 0) DropUnsentAtClose(socket, true);
  }
  Forget();
  if (std::exchange(connect_next_, false)) Begin(MQTT_PROTOCOL_V5);
}

void MosquittoClient::Forget() {
  upkeep_timer_.stop();
  patience_timer_.stop();
  // They may be in the midst of a signal.
  for (auto* notifier : {&readable_, &writable_}) {
    if (!*notifier) continue;
    (*notifier)->setEnabled(false);
    notifier->release()->deleteLater();
  }
  accepted_ = false;
  leaving_ = false;
  line_.reset();
}

void MosquittoClient::Fail(const MqttTrouble& trouble) {
  if (leaving_) {
    Leave();
    return;
  }
  const bool perhaps_old = version_ == MQTT_PROTOCOL_V5 && !accepted_ && trouble.failure == MqttFailure::kClosed;
  Forget();
  if (perhaps_old) {
    Begin(MQTT_PROTOCOL_V311);
  } else {
    user_->Failed(trouble);
  }
}

}  // namespace orvalis
