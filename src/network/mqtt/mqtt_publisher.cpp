#include "network/mqtt/mqtt_publisher.h"

#include <algorithm>
#include <utility>

#include "base/run_time_error.h"
#include "network/readings.h"

namespace orvalis::network {
namespace {

constexpr std::string_view kAnnouncedKey = "Mqtt/Announced";
/// While the unit is silent. Home Assistant takes ten seconds of silence for a lost program.
constexpr std::int64_t kMostSilence = 2'000;  // ms

MqttMessage Availability(bool online, const Station& station, const std::string& topic) {
  return {.topic = topic, .payload = AvailabilityJson(online, station), .lasting = true};
}

/// What removes the message that a broker keeps for `topic`.
MqttMessage Cleared(const std::string& topic) { return {.topic = topic, .payload = "", .lasting = true}; }

}  // namespace

MqttAccess MqttAccessOf(const Settings& settings, std::string client_id) {
  return {.host = settings.MqttHost,
          .port = static_cast<std::uint16_t>(settings.MqttPort),
          .user = settings.MqttUser,
          .password = settings.MqttPassword,
          .tls = settings.MqttTls != 0,
          .ca_file = settings.MqttCaFile,
          .allow_plain_password = settings.MqttAllowPlainPassword != 0,
          .client_id = std::move(client_id)};
}

std::chrono::seconds Backoff::Next() { return std::exchange(next_, std::min(2 * next_, kLongest)); }

bool MqttPublisher::Wanted::operator==(const Wanted& other) const {
  return access == other.access && station.name == other.station.name && station.uuid == other.station.uuid &&
         topics == other.topics && home_assistant == other.home_assistant;
}

void MqttPublisher::Apply(const Settings& settings, const Station& station) {
  std::optional<Wanted> wanted;
  idle_.clear();
  if (settings.MqttEnabled != 0 && settings.MqttPort != 0) {
    wanted = Wanted{.access = MqttAccessOf(settings, MqttNodeId(station)),
                    .station = station,
                    .topics = TopicsOf(settings.MqttPrefix, station),
                    .home_assistant = settings.MqttHomeAssistant != 0};
    wanted->access.will = Availability(false, station, wanted->topics.availability);
    if (settings.MqttHost.empty()) {
      wanted.reset();
      idle_ = Message::Of("MQTT publishes nothing: no broker is named");
    }
  }
  if (wanted == wanted_) return;
  Leave(wanted ? &*wanted : nullptr);
  wanted_ = std::move(wanted);
  backoff_.Reset();
  trouble_.clear();
  reported_ = false;
  announced_ = false;
  if (!idle_.empty()) parts_.record(idle_.English());
  if (wanted_) Connect();
}

void MqttPublisher::Close() {
  Leave(nullptr);
  wanted_.reset();
}

void MqttPublisher::Leave(const Wanted* next) {
  CancelTimer();
  if (state_ == State::kOnline) {
    const MqttTopics& topics = wanted_->topics;
    if (due_) SendValues();  // the last word of a program that ends
    const bool renamed = next != nullptr && next->topics.availability != topics.availability;
    parts_.client.Send(renamed ? Cleared(topics.availability)
                               : Availability(false, wanted_->station, topics.availability));
    const bool undiscovered = next != nullptr && wanted_->home_assistant && !next->home_assistant;
    if (undiscovered) parts_.client.Send(Cleared(topics.discovery));
    Announced left = Recall();
    if (renamed) left.availability.clear();
    if (undiscovered) left.discovery.clear();
    Remember(left);
  }
  if (state_ != State::kOff && state_ != State::kWaiting) parts_.client.Close();
  state_ = State::kOff;
}

void MqttPublisher::Connect() {
  state_ = State::kConnecting;
  asked_.reset();
  due_ = false;
  availability_due_ = false;
  other_.reset();
  old_is_ours_ = false;
  parts_.client.Connect(wanted_->access, *this);
}

void MqttPublisher::Connected() {
  state_ = State::kListening;
  parts_.client.Subscribe(wanted_->topics.availability);
  const std::string old = Recall().availability;
  if (!old.empty() && old != wanted_->topics.availability) parts_.client.Subscribe(old);
  Ask();
}

void MqttPublisher::Answered() {
  asked_.reset();
  if (state_ == State::kListening) {
    Wait(kListen, &MqttPublisher::GoOnline);
  } else if (due_) {
    Publish();
  }
}

void MqttPublisher::Received(std::string_view topic, std::string_view payload) {
  const std::optional<MqttAvailability> word = ReadAvailability(payload);
  const bool ours = word && word->uuid == wanted_->station.uuid;
  if (topic != wanted_->topics.availability) {
    old_is_ours_ = ours;
    return;
  }
  if (state_ == State::kListening) {
    other_ = ours ? std::nullopt : word;
    return;
  }
  if (ours && word->online) return;
  // Of two that came at the same time, one stays.
  if (word && word->online && word->uuid < wanted_->station.uuid) {
    parts_.client.Close();
    Failed({.failure = MqttFailure::kNameTaken, .detail = word->uuid});
    return;
  }
  availability_due_ = true;
}

void MqttPublisher::GoOnline() {
  if (other_ && other_->online) {
    parts_.client.Close();  // in order: the will would be a word about the other program
    Failed({.failure = MqttFailure::kNameTaken, .detail = other_->uuid});
    return;
  }
  state_ = State::kOnline;
  Announce();
  availability_due_ = true;
  Publish();
  if (reported_) {
    settled_timer_ = parts_.loop.CallAfter(kSettled, [this] {
      settled_timer_ = 0;
      Settle();
    });
  } else {
    Settle();
  }
}

void MqttPublisher::Settle() {
  backoff_.Reset();
  trouble_.clear();
  if (reported_) {
    parts_.record("MQTT works again: " + status().English());
  } else if (!announced_) {
    parts_.record("MQTT: " + status().English());
  }
  reported_ = false;
  announced_ = true;
}

void MqttPublisher::Announce() {
  const Announced old = Recall();
  const MqttTopics& topics = wanted_->topics;
  if (old_is_ours_) parts_.client.Send(Cleared(old.availability));
  if (wanted_->home_assistant) {
    parts_.client.Send(
        {.topic = topics.discovery, .payload = DiscoveryJson(wanted_->station, topics), .lasting = true});
  } else if (!old.discovery.empty()) {
    parts_.client.Send(Cleared(old.discovery));
  }
  Remember({.availability = topics.availability, .discovery = wanted_->home_assistant ? topics.discovery : ""});
}

MqttPublisher::Announced MqttPublisher::Recall() const {
  const std::string text = parts_.store.Get(*FindSettingKey(kAnnouncedKey));
  const std::size_t blank = std::min(text.find(' '), text.size());
  return {.availability = text.substr(0, blank), .discovery = text.substr(std::min(blank + 1, text.size()))};
}

void MqttPublisher::Remember(const Announced& announced) {
  const std::string text = announced.availability + " " + announced.discovery;  // no topic of ours has a blank
  const std::string kept = parts_.store.Get(*FindSettingKey(kAnnouncedKey));
  if (text == kept || (text == " " && kept.empty())) return;
  try {
    parts_.store.WriteText(kAnnouncedKey, text == " " ? "" : text);
  } catch (const RunTimeError& error) {
    parts_.record(std::string("What is published over MQTT could not be stored; after a rename, clear it there "
                              "yourself: ") +
                  error.what());
  }
}

void MqttPublisher::Note(const Observation& /*now*/, const Observer::News& news) {
  if (asked_ && parts_.loop.TickCount() - *asked_ > kPatience.count()) {
    parts_.client.Abort();
    Failed({.failure = MqttFailure::kNoAnswer});
    return;
  }
  if (state_ != State::kOnline) return;
  const bool silent = parts_.loop.TickCount() - last_sent_ >= kMostSilence;
  if (!news.reading && !news.reasons && !silent) return;
  if (asked_) {
    due_ = true;
  } else {
    Publish();
  }
}

void MqttPublisher::Publish() {
  last_sent_ = parts_.loop.TickCount();
  const MqttTopics& topics = wanted_->topics;
  if (std::exchange(availability_due_, false)) {
    parts_.client.Send(Availability(true, wanted_->station, topics.availability));
  }
  SendValues();
  Ask();
}

void MqttPublisher::SendValues() {
  due_ = false;
  const MqttTopics& topics = wanted_->topics;
  // Of now, however long ago there was news.
  const std::string observation = ObservationJson(parts_.observe(), wanted_->station);
  parts_.client.Send({.topic = topics.verdict, .payload = VerdictMessageJson(observation)});
  parts_.client.Send({.topic = topics.observation, .payload = observation});
}

void MqttPublisher::Ask() {
  asked_ = parts_.loop.TickCount();
  parts_.client.Ask();
}

void MqttPublisher::Failed(const MqttTrouble& trouble) {
  CancelTimer();
  asked_.reset();
  state_ = State::kWaiting;
  trouble_ = Explain(trouble, wanted_->access);
  if (!std::exchange(reported_, true)) {
    parts_.record("MQTT publishes nothing: " + trouble_.English() + ". It is tried again by itself");
  }
  Wait(backoff_.Next(), &MqttPublisher::Connect);
}

std::string MqttPublisher::Place() const { return wanted_->access.host + ":" + std::to_string(wanted_->access.port); }

Message MqttPublisher::status() const {
  if (!idle_.empty()) return idle_;
  if (!wanted_) return Message::Of("MQTT is off");
  if (state_ == State::kOnline) {
    const std::string& topic = wanted_->topics.availability;
    return Message::Of("publishing to %1, topics %2/…").With(Place(), topic.substr(0, topic.rfind('/')));
  }
  if (!trouble_.empty()) return Message::Of("nothing is published: %1").With(trouble_);
  return Message::Of("connecting to %1").With(Place());
}

void MqttPublisher::Wait(std::chrono::milliseconds delay, void (MqttPublisher::*then)()) {
  timer_ = parts_.loop.CallAfter(delay, [this, then] {
    timer_ = 0;
    (this->*then)();
  });
}

void MqttPublisher::CancelTimer() {
  if (timer_ != 0) parts_.loop.Cancel(std::exchange(timer_, 0));
  if (settled_timer_ != 0) parts_.loop.Cancel(std::exchange(settled_timer_, 0));
}

}  // namespace orvalis::network
