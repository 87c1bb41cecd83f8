#include "network/mqtt/mqtt_trial.h"

#include <utility>

#include "config/station.h"
#include "network/mqtt/mqtt_publisher.h"
#include "network/mqtt/mqtt_topics.h"

namespace orvalis::network {

void MqttTrial::Try(const Settings& settings, Done done) {
  Cancel();
  // With the client ID of the connection in use the broker would end that one.
  Station somebody;
  somebody.uuid = MakeUuid();
  access_ = MqttAccessOf(settings, MqttNodeId(somebody));
  done_ = std::move(done);
  if (access_.host.empty()) {
    Finish(Message::Of("No broker is named"));
    return;
  }
  client_.Connect(access_, *this);
}

void MqttTrial::Cancel() {
  done_ = {};
  if (timer_ != 0) loop_.Cancel(std::exchange(timer_, 0));
  client_.Close();
}

void MqttTrial::Connected() {
  timer_ = loop_.CallAfter(MqttPublisher::kPatience, [this] {
    timer_ = 0;
    Failed({.failure = MqttFailure::kNoAnswer});
  });
  client_.Ask();
}

void MqttTrial::Answered() {
  Finish(access_.tls ? Message::Of("The broker accepts the connection, encrypted")
                     : Message::Of("The broker accepts the connection"));
}

void MqttTrial::Failed(const MqttTrouble& trouble) {
  Finish(Message::Of("Failed: %1").With(Explain(trouble, access_)));
}

void MqttTrial::Finish(const Message& what) {
  const Done done = std::exchange(done_, {});
  Cancel();
  done(what);
}

}  // namespace orvalis::network
