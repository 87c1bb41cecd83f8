#pragma once

#include <functional>
#include <string>
#include <string_view>

#include "base/event_loop.h"
#include "base/message.h"
#include "config/settings.h"
#include "network/mqtt/mqtt_client.h"

namespace orvalis::network {

/// Tries a broker out beside the connection in use, and leaves nothing there.
class MqttTrial : private MqttClient::User {
 public:
  /// Receives what came of it, for a person.
  using Done = std::function<void(const Message& what)>;

  MqttTrial(MqttClient& client, EventLoop& loop) : client_(client), loop_(loop) {}
  MqttTrial(const MqttTrial&) = delete;
  MqttTrial& operator=(const MqttTrial&) = delete;
  ~MqttTrial() { Cancel(); }

  /// Connects as `settings` say. A trial under way ends without a word.
  void Try(const Settings& settings, Done done);
  void Cancel();

 private:
  void Connected() override;
  void Received(std::string_view /*topic*/, std::string_view /*payload*/) override {}
  void Answered() override;
  void Failed(const MqttTrouble& trouble) override;
  void Finish(const Message& what);

  MqttClient& client_;
  EventLoop& loop_;
  MqttAccess access_;
  Done done_;
  EventLoop::TimerId timer_ = 0;
};

}  // namespace orvalis::network
