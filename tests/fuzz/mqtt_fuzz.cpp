// What goes to a broker and what comes from it: names as topics, payloads, and the publisher among whatever a broker
// says when. The first three lines are the station's name, its UUID and the prefix; the others are what happens.
#include <nlohmann/json.hpp>
#include <optional>
#include <string>

#include "network/mqtt/mqtt_publisher.h"
#include "network/readings.h"
#include "tests/fuzz/fuzz.h"
#include "tests/support/fake_event_loop.h"
#include "tests/support/memory_profile.h"

namespace orvalis::network {
namespace {

using fuzz::Input;
using fuzz::Require;

/// Whether `text` is UTF-8, as the library for JSON sees it.
bool IsUtf8(const std::string& text) {
  try {
    return !nlohmann::json(text).dump().empty();
  } catch (const nlohmann::json::exception&) {
    return false;
  }
}

void CheckTopic(const std::string& topic) {
  Require(IsUtf8(topic) && topic.find_first_of(std::string_view("+# \0", 4)) == std::string::npos,
          "a topic is one that brokers take", topic);
  Require(!topic.starts_with('$') && !topic.starts_with('/') && topic.find("//") == std::string::npos,
          "a topic has levels", topic);
}

/// A broker that says what the input has it say.
class Broker : public MqttClient {
 public:
  explicit Broker(const Observation& now) : now_(now) {}

  void Connect(const MqttAccess& access, User& user) override {
    user_ = &user;
    accepted_ = asked_ = false;
    other_.reset();
    topic_ = access.will->topic;
    uuid_ = ReadAvailability(access.will->payload)->uuid;
  }
  void Subscribe(const std::string& topic) override { CheckTopic(topic); }
  void Send(const MqttMessage& message) override {
    Require(accepted_, "nothing is sent without a connection", message.topic);
    CheckTopic(message.topic);
    Require(!other_ || !other_->online || other_->uuid == uuid_, "nothing is said under a name that another uses");
    listening_ = false;
    if (message.payload.empty()) return;
    const auto json = nlohmann::json::parse(message.payload);
    if (json.contains("safe")) Require(json.at("safe") == now_.verdict.safe, "the verdict is the one of now");
    if (json.contains("state")) Require(message.lasting && json.at("uuid") == uuid_, "we speak for ourselves");
  }
  void Ask() override { asked_ = true; }
  void Close() override { user_ = nullptr; }
  void Abort() override { user_ = nullptr; }

  /// What the broker does, as `line` says; nothing that it cannot do now.
  void Do(std::string_view line) {
    const char what = line.empty() ? ' ' : line[0];
    if (user_ == nullptr) return;
    if (what == 'c' && !accepted_) {
      accepted_ = true;
      listening_ = true;
      user_->Connected();
    } else if (what == 'f') {
      const int failure = line.size() > 1 ? line[1] & 15 : 0;
      std::exchange(user_, nullptr)
          ->Failed({.failure = static_cast<MqttFailure>(std::min(failure, static_cast<int>(MqttFailure::kOther))),
                    .detail = std::string(line.substr(1))});
    } else if (what == 'a' && asked_) {
      asked_ = false;
      user_->Answered();
    } else if (what == 'm' && accepted_) {
      if (listening_) other_ = ReadAvailability(line.substr(1));
      user_->Received(topic_, line.substr(1));
    } else if (what == 'o' && accepted_) {
      user_->Received("orvalis/Old/availability", line.substr(1));
    }
  }

 private:
  const Observation& now_;
  User* user_ = nullptr;
  bool accepted_ = false;
  bool asked_ = false;
  bool listening_ = false;
  std::optional<MqttAvailability> other_;  ///< the last word before we speak
  std::string topic_;
  std::string uuid_;
};

void CheckPayloads(const Station& station, const std::string& prefix, std::string_view payload) {
  const MqttTopics topics = TopicsOf(prefix, station);
  for (const std::string& topic : {topics.availability, topics.observation, topics.verdict, topics.discovery}) {
    CheckTopic(topic);
  }
  const auto own = ReadAvailability(AvailabilityJson(true, station));
  Require(own && own->online && (own->uuid == station.uuid || !IsUtf8(station.uuid)), "our own word is read");
  const auto discovery = nlohmann::json::parse(DiscoveryJson(station, topics));
  Require(discovery.at("cmps").size() == 18, "the discovery has all components");
  const auto word = ReadAvailability(payload);
  Require(!word || nlohmann::json::accept(payload), "a word is JSON", payload);
}

void Publish(const Station& station, const std::string& prefix, Input& input) {
  test::FakeEventLoop loop;
  test::MemoryProfile profile;
  profile.values[{"Mqtt", "Announced"}] = "orvalis/Old/availability homeassistant/device/x/config";
  SettingsStore store(profile, "", {});
  Observation now;
  Broker broker(now);
  MqttPublisher publisher({.loop = loop,
                           .client = broker,
                           .store = store,
                           .observe = [&]() -> const Observation& { return now; },
                           .record = [](const std::string&) {}});
  Settings settings;
  settings.MqttEnabled = 1;
  settings.MqttHost = "broker";
  settings.MqttPort = 1883;
  settings.MqttPrefix = prefix;
  publisher.Apply(settings, station);
  while (!input.empty()) {
    const std::string_view line = input.Until('\n');
    if (line == "!") now.verdict.safe = !now.verdict.safe;
    if (line == "h") settings.MqttHomeAssistant ^= 1;
    if (line == "h" || line == "s") publisher.Apply(settings, station);
    if (line.starts_with('+'))
      loop.Advance(std::chrono::milliseconds(100) * std::min<std::size_t>(line.size() * line.size(), 1'000));
    broker.Do(line);
    publisher.Note(now, {.reading = line == "!"});
    Require(!publisher.status().empty(), "there is always something to say");
  }
}

}  // namespace
}  // namespace orvalis::network

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace orvalis;
  fuzz::Input input(data, size);
  Station station;
  station.name = input.Until('\n');
  station.uuid = input.Until('\n');
  const std::string prefix(input.Until('\n'));
  fuzz::Input copy = input;
  network::CheckPayloads(station, prefix, copy.Rest());
  network::Publish(station, prefix, input);
  return 0;
}
