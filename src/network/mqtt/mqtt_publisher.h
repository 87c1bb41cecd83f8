#pragma once

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "app/observer.h"
#include "base/event_loop.h"
#include "base/message.h"
#include "config/settings.h"
#include "config/settings_store.h"
#include "config/station.h"
#include "network/mqtt/mqtt_client.h"
#include "network/mqtt/mqtt_messages.h"
#include "network/mqtt/mqtt_topics.h"
#include "verdict/observation.h"

namespace orvalis::network {

/// The access that the settings ask for, with the client ID and no will yet.
[[nodiscard]] MqttAccess MqttAccessOf(const Settings& settings, std::string client_id);

/// How long to wait before the next attempt: 1, 2, 4 … 60 seconds.
class Backoff {
 public:
  [[nodiscard]] std::chrono::seconds Next();
  void Reset() { next_ = kFirst; }

 private:
  static constexpr std::chrono::seconds kFirst{1};
  static constexpr std::chrono::seconds kLongest{60};
  std::chrono::seconds next_ = kFirst;
};

/// Publishes the observation to a broker: only what is of now, and only under a name that no other program uses. What
/// cannot be sent at once is dropped for the next account of now.
class MqttPublisher : private MqttClient::User {
 public:
  /// After a connection: for the word of another program with the same name to arrive.
  static constexpr std::chrono::milliseconds kListen{500};
  /// A broker that says nothing for so long is lost.
  static constexpr std::chrono::milliseconds kPatience{10'000};
  /// A connection that lasts so long ends a failure.
  static constexpr std::chrono::seconds kSettled{10};

  struct Parts {
    EventLoop& loop;
    MqttClient& client;
    SettingsStore& store;
    std::function<const Observation&()> observe;     ///< the account of now
    std::function<void(const std::string&)> record;  ///< an event
  };

  explicit MqttPublisher(Parts parts) : parts_(std::move(parts)) {}
  MqttPublisher(const MqttPublisher&) = delete;
  MqttPublisher& operator=(const MqttPublisher&) = delete;
  ~MqttPublisher() { Close(); }

  /// Publishes as `settings` say, from now on; what an earlier name left at the broker is cleared. With the same
  /// settings and station nothing happens.
  void Apply(const Settings& settings, const Station& station);
  /// Says offline and ends.
  void Close();
  /// To be called with every new account, at least once a second.
  void Note(const Observation& now, const Observer::News& news);

  /// What is published where, or why not, for a person.
  [[nodiscard]] Message status() const;

 private:
  enum class State : std::uint8_t { kOff, kWaiting, kConnecting, kListening, kOnline };
  /// What the settings ask for.
  struct Wanted {
    MqttAccess access;
    Station station;
    MqttTopics topics;
    bool home_assistant = false;

    [[nodiscard]] bool operator==(const Wanted& other) const;
  };
  /// Lasting messages of ours at the broker, as the profile keeps them.
  struct Announced {
    std::string availability;
    std::string discovery;
  };

  void Connected() override;
  void Received(std::string_view topic, std::string_view payload) override;
  void Answered() override;
  void Failed(const MqttTrouble& trouble) override;

  void Connect();
  void GoOnline();
  void Settle();
  /// Sends what there is of now, and asks the broker whether it has it.
  void Publish();
  void SendValues();
  void Ask();
  /// Clears what other settings left at the broker, and keeps in the profile what these leave there.
  void Announce();
  void Remember(const Announced& announced);
  [[nodiscard]] Announced Recall() const;
  /// Ends the connection; `next` are the settings that come, if any.
  void Leave(const Wanted* next);
  void Wait(std::chrono::milliseconds delay, void (MqttPublisher::*then)());
  void CancelTimer();
  [[nodiscard]] std::string Place() const;

  Parts parts_;
  State state_ = State::kOff;
  std::optional<Wanted> wanted_;  ///< nothing while it is off
  Message idle_;                  ///< why it is off although it is switched on
  Backoff backoff_;
  Message trouble_;         ///< the last one; "" while all is well
  bool reported_ = false;   ///< that trouble, as an event
  bool announced_ = false;  ///< an event said that it works
  EventLoop::TimerId timer_ = 0;
  EventLoop::TimerId settled_timer_ = 0;
  std::optional<std::int64_t> asked_;      ///< TickCount, while the broker has not answered
  std::int64_t last_sent_ = 0;             ///< TickCount
  bool due_ = false;                       ///< there was news while the broker had not answered
  bool availability_due_ = false;          ///< what the broker keeps is not our word
  std::optional<MqttAvailability> other_;  ///< the word of another program on our topic
  bool old_is_ours_ = false;               ///< what the broker keeps under an earlier name is our word
};

}  // namespace orvalis::network
