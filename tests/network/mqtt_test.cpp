#include <gtest/gtest.h>

#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "network/mqtt/mqtt_publisher.h"
#include "network/readings.h"
#include "tests/support/fake_event_loop.h"
#include "tests/support/memory_profile.h"

namespace orvalis::network {
namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;
using Strings = std::vector<std::string>;

constexpr const char* kUuid = "a6a39676-47bb-4c49-816f-025f01f521e5";
constexpr const char* kLowerUuid = "05a39676-47bb-4c49-816f-025f01f521e5";
constexpr const char* kHigherUuid = "f6a39676-47bb-4c49-816f-025f01f521e5";

TEST(MqttTopicsTest, AnyNameIsOneLevelOfATopic) {
  std::string long_name;
  std::string longest_level;
  for (int i = 0; i < 101; ++i) long_name += "ü";
  for (int i = 0; i < 100; ++i) longest_level += "ü";
  const std::pair<std::string, std::string> rows[] = {
      {"Dome A", "Dome_A"},       {"a/b+c#d", "a_b_c_d"}, {"Süd-Kuppel", "Süd-Kuppel"},
      {"ドーム 1", "ドーム_1"},   {"𝄞$", "𝄞$"},           {"a\tb\x7f\n", "a_b__"},
      {"\xc2\xa0x", "_x"},        {"\xff\xc3", "__"},     {"\xed\xa0\x80", "___"},
      {"\xc0\xaf", "__"},         {"\xef\xbf\xbf", "_"},  {"", "else"},
      {long_name, longest_level}, {"\xe3\x80\x80", "_"},  {std::string("\0", 1), "_"},
  };
  for (const auto& [name, level] : rows) EXPECT_EQ(TopicLevel(name, "else"), level) << name;
  Station station;
  station.name = "A";
  station.uuid = kUuid;
  EXPECT_EQ(MqttNodeId(station), "orvalisa6a3967647bb4c49");
  for (const auto& [prefix, begin] : {std::pair{"orvalis", "orvalis/A/"},
                                      {"/site//west dome/", "site/west_dome/A/"},
                                      {"$SYS", "_SYS/A/"},
                                      {"+/#", "_/_/A/"},
                                      {"", "orvalis/A/"}}) {
    EXPECT_EQ(TopicsOf(prefix, station).verdict, std::string(begin) + "verdict") << prefix;
  }
}

TEST(MqttMessagesTest, EveryTemplateReadsAFieldThatTheObservationHas) {
  Station station;
  station.name = "A";
  station.uuid = kUuid;
  const auto discovery = nlohmann::json::parse(DiscoveryJson(station, TopicsOf("orvalis", station)));
  const std::string observation = ObservationJson({}, station);
  const auto known = nlohmann::json::parse(observation);
  EXPECT_EQ(discovery["cmps"].size(), 18u);
  for (const auto& [key, component] : discovery["cmps"].items()) {
    EXPECT_EQ(component["exp_aft"], 10) << key;
    EXPECT_EQ(component["uniq_id"], "orvalisa6a3967647bb4c49_" + key);
    if (component["p"] != "sensor") continue;
    // {{ value_json['values']['ambient_c'] }}: as a JSON pointer /values/ambient_c
    const std::string text = component["val_tpl"];
    std::string pointer;
    for (std::size_t at = text.find("['"); at != std::string::npos; at = text.find("['", at + 1)) {
      pointer += "/" + text.substr(at + 2, text.find("']", at) - at - 2);
    }
    EXPECT_TRUE(known.contains(nlohmann::json::json_pointer(pointer))) << text;
  }
  // Whatever is no explicit "safe" closes the roof.
  EXPECT_EQ(discovery["cmps"]["unsafe"]["stat_t"], "orvalis/A/verdict");
  EXPECT_EQ(discovery["cmps"]["unsafe"]["val_tpl"],
            "{{ 'OFF' if value_json is defined and value_json['safe'] is true else 'ON' }}");
  EXPECT_EQ(VerdictMessageJson(observation),
            R"({"time":"1970-01-01T00:00:00.000Z","station":"A","uuid":")" + std::string(kUuid) +
                R"(","source":"none","age_s":null,"safe":false,"since":"1970-01-01T00:00:00.000Z","hold_s":0.0,)"
                R"("reasons":[]})");
}

/// A broker that does what the test says.
class FakeMqttClient : public MqttClient {
 public:
  void Connect(const MqttAccess& access, User& user) override {
    log.push_back("connect " + access.will->topic);
    user_ = &user;
  }
  void Subscribe(const std::string& topic) override { log.push_back("subscribe " + topic); }
  void Send(const MqttMessage& message) override {
    const bool online = message.payload.find("\"online\"") != std::string::npos;
    const std::string what = message.payload.empty() ? "nothing" : online ? "online" : "something";
    log.push_back(message.topic + (message.lasting ? " keeps " : " ") + what);
    last_payload = message.payload;
  }
  void Ask() override { log.push_back("ask"); }
  void Close() override { log.push_back("close"); }
  void Abort() override { log.push_back("abort"); }
  Strings Take() { return std::exchange(log, {}); }
  User& user() { return *user_; }

  Strings log;
  std::string last_payload;

 private:
  User* user_ = nullptr;
};

class MqttPublisherTest : public testing::Test {
 protected:
  MqttPublisherTest() {
    settings_.MqttEnabled = 1;
    settings_.MqttHost = "broker";
    station_.name = "A";
    station_.uuid = kUuid;
  }
  void Note(bool reading = true) { publisher_.Note(now_, {.reading = reading}); }
  /// Connects; the broker keeps this on the station's topic.
  void Connect(const std::string& kept = "") {
    publisher_.Apply(settings_, station_);
    Accept(kept);
  }
  void Accept(const std::string& kept = "") {
    client_.user().Connected();
    if (!kept.empty()) client_.user().Received("orvalis/A/availability", kept);
    client_.user().Answered();
    client_.Take();
    loop_.Advance(milliseconds(500));
  }
  static std::string Word(const std::string& state, const std::string& uuid) {
    return R"({"state":")" + state + R"(","uuid":")" + uuid + "\"}";
  }

  test::FakeEventLoop loop_;
  test::MemoryProfile profile_;
  SettingsStore store_{profile_, "", {}};
  Settings settings_;
  Station station_;
  Observation now_;
  FakeMqttClient client_;
  Strings events_;
  MqttPublisher publisher_{{.loop = loop_,
                            .client = client_,
                            .store = store_,
                            .observe = [this]() -> const Observation& { return now_; },
                            .record = [this](const std::string& text) { events_.push_back(text); }}};
};

const Strings kValues{"orvalis/A/verdict something", "orvalis/A/observation something", "ask"};

TEST_F(MqttPublisherTest, SendsWhatIsOfNowAndNothingWhileTheBrokerDoesNotAnswer) {
  Connect();
  EXPECT_EQ(client_.Take(), (Strings{"homeassistant/device/orvalisa6a3967647bb4c49/config keeps something",
                                     "orvalis/A/availability keeps online", kValues[0], kValues[1], "ask"}));
  for (int i = 0; i < 4; ++i) {
    loop_.Advance(seconds(2));
    Note();
  }
  EXPECT_EQ(client_.Take(), Strings{});
  now_.verdict.safe = true;
  client_.user().Answered();
  EXPECT_EQ(client_.Take(), kValues);
  EXPECT_NE(client_.last_payload.find("\"safe\":true"), std::string::npos) << "the account of now, not an earlier one";
  client_.user().Answered();
  Note(false);
  EXPECT_EQ(client_.Take(), Strings{});
  loop_.Advance(seconds(2));
  Note(false);
  EXPECT_EQ(client_.Take(), kValues) << "the unit is silent, the program is not";
  loop_.Advance(milliseconds(10'001));
  Note();
  EXPECT_EQ(client_.Take(), Strings{"abort"});
  publisher_.Close();
  EXPECT_EQ(client_.Take(), Strings{}) << "there is nobody to say offline to";
}

TEST_F(MqttPublisherTest, TriesAgainEverLaterAndReportsAFailureAndItsEndOnce) {
  publisher_.Apply(settings_, station_);
  for (const int wait : {1, 2, 4, 8, 16, 32, 60, 60}) {
    client_.Take();
    client_.user().Failed({.failure = MqttFailure::kUnreachable, .detail = "why"});
    loop_.Advance(milliseconds(wait * 1'000 - 1));
    EXPECT_EQ(client_.Take(), Strings{}) << wait;
    loop_.Advance(milliseconds(1));
    EXPECT_EQ(client_.Take().size(), 1u) << wait;
  }
  EXPECT_EQ(events_,
            Strings{"MQTT publishes nothing: broker:1883 cannot be reached: why. It is tried again by itself"});
  events_.clear();
  Accept();
  loop_.Advance(milliseconds(9'999));
  EXPECT_EQ(events_, Strings{}) << "one that is lost at once mends nothing";
  loop_.Advance(milliseconds(1));
  EXPECT_EQ(events_, Strings{"MQTT works again: publishing to broker:1883, topics orvalis/A/…"});
  client_.user().Failed({.failure = MqttFailure::kClosed});
  client_.Take();
  loop_.Advance(seconds(1));
  EXPECT_EQ(client_.Take().size(), 1u);
}

TEST_F(MqttPublisherTest, PublishesNothingUnderANameThatAnotherProgramUses) {
  Connect(Word("online", kHigherUuid));
  EXPECT_EQ(client_.Take(), Strings{"close"});
  ASSERT_EQ(events_.size(), 1u);
  EXPECT_NE(events_[0].find(kHigherUuid), std::string::npos);
  loop_.Advance(seconds(1));
  Accept(Word("offline", kHigherUuid));
  EXPECT_EQ(client_.Take().size(), 5u) << "it is gone";
  // Two that came at the same time: one of them stays.
  client_.user().Answered();
  client_.user().Received("orvalis/A/availability", Word("online", kHigherUuid));
  Note();
  EXPECT_EQ(client_.Take().front(), "orvalis/A/availability keeps online");
  client_.user().Received("orvalis/A/availability", Word("online", kLowerUuid));
  EXPECT_EQ(client_.Take(), Strings{"close"});
}

TEST_F(MqttPublisherTest, LeavesNothingBehindAtTheBrokerAfterARename) {
  Connect();
  client_.Take();
  station_.name = "B";
  settings_.MqttHomeAssistant = 0;
  publisher_.Apply(settings_, station_);
  EXPECT_EQ(client_.Take(), (Strings{"orvalis/A/availability keeps nothing",
                                     "homeassistant/device/orvalisa6a3967647bb4c49/config keeps nothing", "close",
                                     "connect orvalis/B/availability"}));
  publisher_.Apply(settings_, station_);
  EXPECT_EQ(client_.Take(), Strings{}) << "nothing changed";
  // Renamed while the broker was away: cleared later, unless the word there is another's.
  for (const auto& [uuid, cleared] : {std::pair{kUuid, true}, {kHigherUuid, false}}) {
    profile_.values[{"Mqtt", "Announced"}] = "orvalis/A/availability ";
    client_.user().Connected();
    EXPECT_EQ(client_.Take(), (Strings{"subscribe orvalis/B/availability", "subscribe orvalis/A/availability", "ask"}));
    client_.user().Received("orvalis/A/availability", Word("offline", uuid));
    client_.user().Answered();
    loop_.Advance(milliseconds(500));
    EXPECT_EQ(client_.Take().front() == "orvalis/A/availability keeps nothing", cleared);
    EXPECT_EQ(profile_.At("Announced", "Mqtt"), "orvalis/B/availability ");
    client_.user().Failed({.failure = MqttFailure::kClosed});
    loop_.Advance(seconds(2));
    client_.Take();
  }
}

}  // namespace
}  // namespace orvalis::network
