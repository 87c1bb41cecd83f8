#include <gtest/gtest.h>

#include <QNetworkDatagram>
#include <QUdpSocket>
#include <nlohmann/json.hpp>
#include <string>
#include <utility>
#include <vector>

#include "network/network_front.h"
#include "platform/qt/qt_sockets.h"
#include "tests/support/fake_event_loop.h"
#include "tests/support/memory_profile.h"
#include "tests/support/raw_client.h"

namespace orvalis::network {
namespace {

using nlohmann::json;
using std::chrono::milliseconds;
using test::RawClient;

constexpr milliseconds kMinute{60'000};

/// The front as the settings have it, with an observation of the test's own.
class NetworkFrontTest : public testing::Test {
 protected:
  NetworkFrontTest() {
    settings_.NetworkPort = 24'190;
    settings_.NetworkStation = "Dome <A>";
    observation_.time = 1'795'291'445'250;  // 2026-11-21T20:04:05.250Z
    observation_.age = milliseconds(1'500);
    observation_.values.ambient_c = 4.25;
    observation_.values.sky_c = -17.5;
    observation_.values.humidity_percent = 100.4;
    observation_.values.wind_m_s = 3.0;
    observation_.values.wind_gust_m_s = -4.4704;
    observation_.values.cloud_cover_percent = 50;
    observation_.words.rain = "Damp";
    observation_.verdict.safe = true;
  }

  NetworkFront::Parts Parts() {
    return {.sockets = sockets_,
            .loop = loop_,
            .clock = clock_,
            .store = store_,
            .observe = [this]() -> const Observation& { return observation_; },
            .recorded = [this]() -> HistoryView {
              return {history_, verdicts_};
            },
            .counters = [] { return MetricCounters(); },
            .record = [this](const std::string& text) { events_.push_back(text); },
            .complain = [this](const Message& text) { complaint_ = text; },
            .traffic = traffic_};
  }
  void Start() {
    front_.Apply(settings_);
    while (!front_.open() && settings_.NetworkPort < 24'290) {
      ++settings_.NetworkPort;
      front_.Apply(settings_);
    }
    events_.clear();
  }
  [[nodiscard]] quint16 port() const { return static_cast<quint16>(settings_.NetworkPort); }

  /// The status and the body.
  std::pair<int, std::string> Ask(const std::string& method, std::string target, const std::string& parameters) {
    const bool puts = method == "PUT";
    if (!puts && !parameters.empty()) target += "?" + parameters;
    std::string request = method + " " + target + " HTTP/1.1\r\nHost: localhost\r\nConnection: close\r\n";
    if (puts) request += "Content-Length: " + std::to_string(parameters.size()) + "\r\n";
    const std::string answer = RawClient(port()).Ask(request + "\r\n" + (puts ? parameters : ""));
    return {std::stoi("0" + answer.substr(std::min<std::size_t>(answer.size(), 9), 3)),
            answer.substr(answer.find("\r\n\r\n") + 4)};
  }
  json Get(const std::string& target, const std::string& parameters = "") {
    return json::parse(Ask("GET", target, parameters).second, nullptr, false);
  }

  QtSockets sockets_;
  test::FakeEventLoop loop_;
  test::FakeClock clock_;
  test::MemoryProfile profile_;
  SettingsStore store_{profile_, "", {}};
  Settings settings_;
  Observation observation_;
  std::vector<std::string> events_;
  Message complaint_;
  Traffic* traffic_ = nullptr;
  History history_;
  VerdictHistory verdicts_;
  NetworkFront front_{Parts()};
};

const std::string kConditions = "/api/v1/observingconditions/0/";
const std::string kSafety = "/api/v1/safetymonitor/0/";
// What is expected instead of an envelope.
constexpr int kRefused = -1;

struct CallCase {
  const char* method;
  std::string target;
  const char* parameters;
  int error;
  json value;  ///< null for none
};

TEST_F(NetworkFrontTest, AnswersAlpacaCallsAsClientsExpect) {
  Start();
  const std::vector<CallCase> cases{
      // Paths: in lower case, complete, with the number of a device.
      {"GET", "/api/v1/SafetyMonitor/0/issafe", "", kRefused, {}},
      {"GET", "/api/v1/baddevicetype/0/issafe", "", kRefused, {}},
      {"GET", "/api/v1/safetymonitor/-1/issafe", "", kRefused, {}},
      {"GET", "/api/v1/safetymonitor/1/issafe", "", kRefused, {}},
      {"GET", "/api/v2/safetymonitor/0/issafe", "", kRefused, {}},
      {"GET", kSafety + "descrip", "", kRefused, {}},
      {"PUT", kSafety + "issafe", "", kRefused, {}},
      {"GET", kSafety + "connect", "", kRefused, {}},
      {"POST", kSafety + "issafe", "", kRefused, {}},
      // Identifiers: optional whole numbers, in a query in any case.
      {"GET", kSafety + "issafe", "", 0, true},
      {"GET", kSafety + "issafe", "cLIENTid=0&extra=%20&clienttransactionid=4294967295", 0, true},
      {"GET", kSafety + "issafe", "ClientTransactionID=", kRefused, {}},
      {"GET", kSafety + "issafe", "ClientID=-1", kRefused, {}},
      {"GET", kSafety + "issafe", "ClientID=abc", kRefused, {}},
      {"GET", kSafety + "issafe", "ClientTransactionID=4294967296", kRefused, {}},
      // Nothing is done by a call with a bad identifier.
      {"PUT", kSafety + "connect", "ClientID=5&ClientTransactionID=x", kRefused, {}},
      {"GET", kSafety + "connected", "ClientID=5", 0, false},
      // Members of all devices, before anyone has connected.
      {"GET", kConditions + "interfaceversion", "", 0, 2},
      {"GET", kSafety + "interfaceversion", "", 0, 3},
      {"GET", kSafety + "name", "", 0, "Orvalis safety, Dome <A>"},
      {"GET", kConditions + "driverversion", "", 0, "0.1"},
      {"GET", kConditions + "connecting", "", 0, false},
      {"GET", kConditions + "supportedactions", "", 0, json::array()},
      {"PUT", kConditions + "action", "Action=x&Parameters=", 0x400, ""},
      {"PUT", kSafety + "action", "Action=x&Parameters=", 0x40C, ""},
      {"PUT", kSafety + "action", "action=UnsafeReasons", kRefused, {}},
      {"PUT", kSafety + "action", "Action=unsafereasons", 0, "[]"},
      {"PUT", kSafety + "commandbool", "Command=x&Raw=true", 0x400, false},
      {"PUT", kSafety + "commandblind", "Command=x&Raw=perhaps", kRefused, {}},
      // Each client connects for itself; one without a number may read.
      {"GET", kConditions + "temperature", "", 0, 4.25},
      {"GET", kConditions + "temperature", "ClientID=5", 0x407, 0.0},
      {"GET", kConditions + "devicestate", "ClientID=5", 0x407, json::array()},
      {"PUT", kConditions + "averageperiod", "ClientID=5&AveragePeriod=0", 0x407, {}},
      {"PUT", kConditions + "connected", "ClientID=5&Connected=", kRefused, {}},
      {"PUT", kConditions + "connected", "ClientID=5&connected=True", kRefused, {}},
      {"PUT", kConditions + "connected", "ClientID=5&Connected=tRUE", 0, {}},
      {"PUT", kConditions + "connect", "ClientID=6", 0, {}},
      {"PUT", kConditions + "disconnect", "ClientID=6", 0, {}},
      {"GET", kConditions + "connected", "ClientID=6", 0, false},
      {"GET", kConditions + "connected", "ClientID=5", 0, true},
      {"GET", kConditions + "temperature", "ClientID=5", 0, 4.25},
      // What is fitted, and what is not known now.
      {"GET", kConditions + "cloudcover", "", 0, 50.0},
      {"GET", kConditions + "humidity", "", 0, 100.0},
      {"GET", kConditions + "rainrate", "", 0, 0.1},
      {"GET", kConditions + "skytemperature", "", 0, -17.5},
      {"GET", kConditions + "windspeed", "", 0, 3.0},
      {"GET", kConditions + "windgust", "", 0, 0.0},
      {"GET", kConditions + "dewpoint", "", 0x40B, 0.0},
      {"GET", kConditions + "pressure", "", 0x400, 0.0},
      {"GET", kConditions + "winddirection", "ClientID=7", 0x400, 0.0},
      {"PUT", kConditions + "refresh", "", 0x400, {}},
      {"GET", kConditions + "averageperiod", "", 0, 0.0},
      {"PUT", kConditions + "averageperiod", "AveragePeriod=0.0", 0, {}},
      {"PUT", kConditions + "averageperiod", "AveragePeriod=-2", 0x401, {}},
      {"PUT", kConditions + "averageperiod", "AveragePeriod=asduio6fghZZ", kRefused, {}},
      {"PUT", kConditions + "averageperiod", "AveragePeriod=nan", kRefused, {}},
      {"PUT", kConditions + "averageperiod", "aVERAGEpERIOD=0", kRefused, {}},
      {"GET", kConditions + "sensordescription", "sENSORnAME=temperature", 0, "Degrees Celsius, ambient"},
      {"GET", kConditions + "sensordescription", "SensorName=Pressure", 0x400, ""},
      {"GET", kConditions + "sensordescription", "SensorName=AveragePeriod", 0x401, ""},
      {"GET", kConditions + "sensordescription", "SensorName=", 0x401, ""},
      {"GET", kConditions + "sensordescription", "", kRefused, {}},
      {"GET", kConditions + "timesincelastupdate", "SensorName=Temperature", 0, 1.5},
      {"GET", kConditions + "timesincelastupdate", "SensorName=", 0, 1.5},
      {"GET", kConditions + "timesincelastupdate", "SensorName=DewPoint", 0, -1.0},
      {"GET", kConditions + "timesincelastupdate", "SensorName=StarFWHM", 0x400, 0.0},
      {"GET", kConditions + "timesincelastupdate", "", kRefused, {}},
      {"GET", kSafety + "devicestate", "ClientID=9", 0,
       json::parse(R"([{"Name":"IsSafe","Value":true},{"Name":"TimeStamp","Value":"2026-11-21T20:04:05.250Z"}])")},
      {"GET", "/management/apiversions", "", 0, json::array({1})},
      {"GET", "/management/v1/description", "ClientID=x", kRefused, {}},
      {"GET", "/management/v1/nothing", "", kRefused, {}},
  };
  int last_transaction = 0;
  for (const CallCase& row : cases) {
    SCOPED_TRACE(std::string(row.method) + " " + row.target + " " + row.parameters);
    const auto [status, body] = Ask(row.method, row.target, row.parameters);
    if (row.error == kRefused) {
      EXPECT_TRUE(status == 400 || status == 405) << status;
      continue;
    }
    EXPECT_EQ(status, 200);
    const json answer = json::parse(body, nullptr, false);
    ASSERT_TRUE(answer.is_object()) << body;
    EXPECT_EQ(answer.value("ErrorNumber", -1), row.error);
    EXPECT_EQ(answer.value("ErrorMessage", "?").empty(), row.error == 0);
    EXPECT_EQ(answer.contains("Value") ? answer["Value"] : json(), row.value);
    EXPECT_EQ(answer.value("ServerTransactionID", 0), ++last_transaction);
  }
  EXPECT_EQ(Get(kSafety + "issafe", "clientTRANSACTIONid=67890")["ClientTransactionID"], 67890);
  EXPECT_EQ(json::parse(Ask("PUT", kSafety + "connect", "clienttransactionid=67890").second)["ClientTransactionID"], 0);
  EXPECT_NE(Ask("GET", "/setup", "").second.find("Dome &lt;A&gt;"), std::string::npos);
  EXPECT_EQ(Ask("GET", "/setup/v1/dome/0/setup", "").first, 403);
}

TEST_F(NetworkFrontTest, TellsNothingThatIsNoLongerSo) {
  Start();
  EXPECT_EQ(Get(kConditions + "timesincelastupdate", "SensorName=Temperature")["Value"], 1.5);
  EXPECT_EQ(Get(kConditions + "devicestate")["Value"].back()["Value"], "2026-11-21T20:04:03.750Z");
  loop_.Advance(milliseconds(12'000));
  observation_.age = milliseconds(13'500);
  observation_.values = {};
  observation_.words = {};
  observation_.verdict.safe = false;
  observation_.verdict.reasons.Add(Reason::kStale);
  EXPECT_EQ(Get(kSafety + "issafe", "ClientID=3")["Value"], false);
  EXPECT_EQ(Get(kSafety + "issafe", "ClientID=3")["ErrorNumber"], 0);
  EXPECT_EQ(Get(kConditions + "temperature")["ErrorNumber"], 0x40B);
  EXPECT_EQ(Get(kConditions + "rainrate")["ErrorNumber"], 0x40B);
  EXPECT_EQ(Get(kConditions + "devicestate")["Value"], json::array());
  EXPECT_EQ(Get(kConditions + "timesincelastupdate", "SensorName=Temperature")["Value"], 13.5);
  const json reasons = json::parse(Ask("PUT", kSafety + "action", "Action=UnsafeReasons&Parameters=").second);
  EXPECT_EQ(json::parse(reasons["Value"].get<std::string>())[0]["name"], "stale");
}

TEST_F(NetworkFrontTest, TellsTheReadingsToProgramsThatWantNoAlpaca) {
  Start();
  observation_.verdict.since = observation_.time - 60'000;
  const json safe = Get("/observation");
  EXPECT_EQ(safe["time"], "2026-11-21T20:04:05.250Z");
  EXPECT_EQ(safe["since"], "2026-11-21T20:03:05.250Z");
  EXPECT_EQ(safe["station"], "Dome <A>");
  EXPECT_EQ(safe["uuid"], front_.station().uuid);
  EXPECT_EQ(safe["age_s"], 1.5);
  EXPECT_EQ(safe["values"]["humidity_percent"], 100.4);
  EXPECT_TRUE(safe["values"].contains("dew_point_c") && safe["values"]["dew_point_c"].is_null());
  EXPECT_EQ(safe["words"]["rain"], "Damp");
  EXPECT_TRUE(safe["words"]["sky"].is_null());
  EXPECT_EQ(Get("/roof-status").dump(), R"({"roof_status":{"open_ok":1,"reasons":""}})");
  const std::string metrics = Ask("GET", "/metrics", "").second;
  for (const char* const line :
       {"\norvalis_ambient_celsius 4.25\n", "\norvalis_humidity_ratio 1.004\n", "\norvalis_safe 1\n",
        "\norvalis_unsafe_reason{reason=\"stale\"} 0\n", "{station=\"Dome <A>\",uuid="}) {
    EXPECT_NE(metrics.find(line), std::string::npos) << line << metrics;
  }
  EXPECT_EQ(metrics.find("dew_point"), std::string::npos);
  // The stream begins with how it is, and goes on with every change.
  RawClient reader(port());
  reader.Send("GET /observation/stream HTTP/1.1\r\nHost: localhost\r\n\r\n");
  ASSERT_TRUE(test::RunUntil([&] { return reader.received().endsWith("}\n\n"); }));
  observation_.verdict.safe = false;
  observation_.verdict.reasons.Add(Reason::kRain);
  front_.Note(observation_, {});
  front_.Note(observation_, {.reasons = true});
  ASSERT_TRUE(test::RunUntil([&] { return reader.received().contains("\"safe\":false"); }));
  EXPECT_EQ(reader.received().count("data: {"), 2);
  EXPECT_EQ(Get("/roof-status")["roof_status"]["open_ok"], 0);
}

TEST_F(NetworkFrontTest, ForgetsOnlyClientsOfWhoHasTooMany) {
  AlpacaClients clients;
  const auto call = [](const char* address, std::size_t id) {
    const std::string query = "ClientID=" + std::to_string(id);
    HttpRequest request;
    request.query = query;
    request.peer.address = address;
    return AlpacaCall(request);
  };
  clients.SetConnected(call("192.0.2.1", 1), true, 0);
  for (std::size_t i = 0; i < AlpacaClients::kMost; ++i) clients.SetConnected(call("192.0.2.9", i), true, 1'000);
  EXPECT_TRUE(clients.IsConnected(call("192.0.2.1", 1), 2'000));
  EXPECT_FALSE(clients.IsConnected(call("192.0.2.9", 0), 2'000));
}

TEST_F(NetworkFrontTest, KeepsItsIdentifiersForever) {
  Start();
  const json devices = Get("/management/v1/configureddevices")["Value"];
  ASSERT_EQ(devices.size(), 2U);
  EXPECT_EQ(devices[0]["DeviceType"], "ObservingConditions");
  EXPECT_NE(devices[0]["UniqueID"], devices[1]["UniqueID"]);
  EXPECT_EQ(devices[1]["UniqueID"], profile_.At("SafetyMonitorUuid", "Network"));
  Station again;
  LoadIdentifiers(store_, again);
  EXPECT_EQ(again.observing_conditions_id, devices[0]["UniqueID"]);
  EXPECT_EQ(again.uuid, front_.station().uuid);
  // Where they cannot be stored they hold for this run, and that is said.
  profile_.values.clear();
  profile_.fails = true;
  Station lost;
  EXPECT_THROW(LoadIdentifiers(store_, lost), RunTimeError);
  EXPECT_EQ(lost.safety_monitor_id.size(), 36U);
}

TEST_F(NetworkFrontTest, WaitsForItsPortAndTakesNoOther) {
  Start();
  NetworkFront second(Parts());
  second.Apply(settings_);
  loop_.Advance(3 * kMinute);
  ASSERT_EQ(events_.size(), 1U);
  EXPECT_NE(events_[0].find("another program has the port"), std::string::npos);
  EXPECT_EQ(complaint_.English(), events_[0]);
  EXPECT_TRUE(second.served().trouble == complaint_);
  EXPECT_EQ(front_.served().pages, std::vector{"http://127.0.0.1:" + std::to_string(port()) + "/"});
  front_.Close();
  loop_.Advance(kMinute);
  EXPECT_TRUE(second.open());
  EXPECT_TRUE(complaint_.empty() && second.served().trouble.empty());
  EXPECT_EQ(events_.size(), 2U);
  settings_.NetworkEnabled = 0;
  second.Apply(settings_);
  EXPECT_FALSE(second.open());
}

TEST_F(NetworkFrontTest, ShowsItsRequestsWhileTheirBoxIsTicked) {
  Start();
  Traffic traffic;
  traffic_ = &traffic;
  Get(kSafety + "issafe");
  EXPECT_EQ(traffic.text(), "");
  traffic.SetWanted(TrafficCategory::kNetwork, true);
  Get(kSafety + "issafe", "ClientID=7&key=secret");
  Ask("BREW", "/n\xE4he/" + std::string(100, 'a'), "");
  Ask("GET", "user:secret@dome", "");
  traffic_ = nullptr;
  EXPECT_EQ(Ask("GET", "/help", "").first, kOk);
  EXPECT_EQ(traffic.text(), "127.0.0.1 GET /api/v1/safetymonitor/0/issafe: 200\r\n127.0.0.1 BREW /n%E4he/" +
                                std::string(94, 'a') + "...: 404\r\n127.0.0.1 GET *: 404\r\n");
}

TEST_F(NetworkFrontTest, IsFoundWhenItIsOpenToTheNetwork) {
  const auto ask = [&](const char* question, const char* address) {
    QUdpSocket client;
    client.bind(QHostAddress(QHostAddress::AnyIPv4));
    client.writeDatagram(question, QHostAddress(address), 32'227);
    QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    return client.waitForReadyRead(300) ? client.receiveDatagram().data().toStdString() : "";
  };
  Start();
  EXPECT_EQ(ask("alpacadiscovery1", "127.255.255.255"), "");
  settings_.NetworkAddress = "0.0.0.0";
  // Another program has the port, and takes its share.
  QUdpSocket other;
  ASSERT_TRUE(
      other.bind(QHostAddress(QHostAddress::AnyIPv4), 32'227, QUdpSocket::ShareAddress | QUdpSocket::ReuseAddressHint));
  Start();
  EXPECT_EQ(ask("alpacadiscovery1", "127.255.255.255"), "{\"AlpacaPort\":" + std::to_string(port()) + "}");
  EXPECT_EQ(ask("alpacadiscovery2 and more", "127.255.255.255"), "{\"AlpacaPort\":" + std::to_string(port()) + "}");
  EXPECT_EQ(ask("alpacadiscovery", "127.255.255.255"), "");
  EXPECT_EQ(ask("alpacadiscovery0", "127.255.255.255"), "");
  // A flood is answered in part, and the next second is like any other.
  QUdpSocket flood;
  for (int i = 0; i < 200; ++i) flood.writeDatagram("alpacadiscovery1", QHostAddress("127.255.255.255"), 32'227);
  EXPECT_EQ(ask("alpacadiscovery1", "127.255.255.255"), "");
  loop_.Advance(milliseconds(1'000));
  EXPECT_NE(ask("alpacadiscovery1", "127.255.255.255"), "");
  // Nor does the one who floods use up the answers of the others.
  AlpacaDiscovery discovery(1);
  const Datagram flooding{.bytes = "alpacadiscovery1", .peer = {.address = "192.0.2.9"}};
  while (!discovery.Answer(flooding, 0).empty()) continue;
  EXPECT_EQ(discovery.Answer({.bytes = "alpacadiscovery1", .peer = {.address = "192.0.2.1"}}, 0), "{\"AlpacaPort\":1}");
}

}  // namespace
}  // namespace orvalis::network
