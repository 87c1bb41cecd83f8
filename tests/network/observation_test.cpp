#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

#include "network/observation/observation_service.h"
#include "network/page/page_files.h"
#include "tests/support/fake_event_loop.h"

namespace orvalis::network {
namespace {

using std::chrono::milliseconds;

constexpr std::int64_t kNow = 1'795'291'445'250;  // 2026-11-21T20:04:05.250Z
constexpr std::int64_t kSecond = 1'000;

/// What is asked of the resources, with an observation and a history of the test's own.
class ObservationServiceTest : public testing::Test, protected EventChannel::Reader {
 protected:
  ObservationServiceTest() {
    station_.name = "Dome \"A\"\xff";
    station_.uuid = "id";
    now_.time = kNow;
    now_.verdict.reasons.Add(Reason::kNoConnection);
    service_.AddTo(resources_);
  }
  /// As it is told in the course of a night.
  void Observe() {
    now_.age = milliseconds(1'500);
    now_.source = ReadingSource::kUnit;
    now_.connected = true;
    now_.values.ambient_c = 4.25;
    now_.values.body_c = 6;
    now_.values.sky_c = -17.50049;
    now_.values.humidity_percent = 100.4;
    now_.values.rain_counts = 412;
    now_.words = {.sky = "PCloudy", .wind = "Calm", .rain = "Rain", .light = "Dark", .heater = "?", .relay = "Y"};
    now_.figures.rain = 412;
    now_.figures.rain_limit = 350;
    now_.verdict.reasons = {};
    now_.verdict.reasons.Add(Reason::kRain);
    now_.verdict.reasons.Add(Reason::kForced);
    now_.verdict.since = kNow - 60 * kSecond;
  }

  HttpResponse Ask(std::string_view path, std::string_view query = "", std::string_view accept = "") {
    const std::array<HeaderField, 1> headers{{{"Accept", accept}}};
    HttpRequest request;
    request.method = Method::kGet;
    request.path = path;
    request.query = query;
    request.headers = headers;
    return resources_.Answer(request);
  }
  void Push(std::string_view bytes) override { pushed_.emplace_back(bytes); }

  test::FakeEventLoop loop_;
  Observation now_;
  Station station_;
  History history_;
  Resources resources_;
  std::vector<std::string> pushed_;
  ObservationService service_{{.loop = loop_,
                               .station = [this]() -> const Station& { return station_; },
                               .observe = [this]() -> const Observation& { return now_; },
                               .recorded =
                                   [this] {
                                     return ObservationService::Recorded{history_, false};
                                   },
                               .counters = [] { return MetricCounters{.connections = 3}; }}};
};

TEST_F(ObservationServiceTest, TellsWhatIsKnownAndNullForTheRest) {
  EXPECT_EQ(Ask("/observation").body,
            R"({"time":"2026-11-21T20:04:05.250Z","station":"Dome \"A\"�","uuid":"id","source":"none",)"
            R"("connected":false,"age_s":null,"safe":false,"since":"1970-01-01T00:00:00.000Z","hold_s":0.0,)"
            R"("reasons":[{"name":"no_connection","text":"not connected to the unit"}],)"
            R"("values":{"ambient_c":null,"sky_c":null,"clear_sky_c":null,"difference_c":null,"dew_point_c":null,)"
            R"("humidity_percent":null,"wind_m_s":null,"wind_average_m_s":null,"wind_gust_m_s":null,)"
            R"("rain_counts":null,"light_counts":null,"cloud_cover_percent":null},)"
            R"("words":{"sky":null,"wind":null,"rain":null,"light":null},"heater":null,"relay":null})");
  EXPECT_EQ(Ask("/roof-status").body, R"({"roof_status":{"open_ok":0,"reasons":"not connected to the unit"}})");
  Observe();
  const std::string body = Ask("/observation").body;
  for (const char* const part :
       {R"("source":"unit","connected":true,"age_s":1.5,"safe":false,"since":"2026-11-21T20:03:05.250Z")",
        R"({"name":"rain","text":"rain 412 counts, limit 350"},{"name":"forced","text":"forced by hand"}])",
        R"({"ambient_c":4.25,"sky_c":-17.5,"clear_sky_c":null)", R"("humidity_percent":100.4,"wind_m_s":null)",
        R"("words":{"sky":"PCloudy","wind":"Calm","rain":"Rain","light":"Dark"},"heater":"?","relay":"Y"})"}) {
    EXPECT_NE(body.find(part), std::string::npos) << part << "\n" << body;
  }
  EXPECT_EQ(Ask("/roof-status").body,
            R"({"roof_status":{"open_ok":0,"reasons":"rain 412 counts, limit 350. forced by hand"}})");
  now_.verdict = {};
  now_.verdict.safe = true;
  EXPECT_EQ(Ask("/roof-status").body, R"({"roof_status":{"open_ok":1,"reasons":""}})");
}

TEST_F(ObservationServiceTest, LeavesUnknownValuesOutOfTheMetrics) {
  Observe();
  station_.name = "a\\b\n";
  const HttpResponse text = Ask("/metrics");
  EXPECT_EQ(text.content_type, "text/plain; version=0.0.4; charset=utf-8");
  for (const char* const part :
       {"uuid=\"id\"} 1\n", "station=\"a\\\\b\\n\"", "\norvalis_safe 0\n",
        "\norvalis_unsafe_reason{reason=\"rain\"} 1\n", "\norvalis_unsafe_reason{reason=\"stale\"} 0\n",
        "\norvalis_observation_age_seconds 1.5\n", "\norvalis_ambient_celsius 4.25\n",
        "\norvalis_relative_humidity_ratio 1.004\n",
        "\n# TYPE orvalis_connections_total counter\norvalis_connections_total 3\n"}) {
    EXPECT_NE(text.body.find(part), std::string::npos) << part << "\n" << text.body;
  }
  EXPECT_EQ(text.body.find("wind"), text.body.find("wind\"} 0")) << "an unknown wind";
  const HttpResponse open = Ask("/metrics", "", "text/plain;q=0.5,application/openmetrics-text;version=1.0.0");
  EXPECT_EQ(open.content_type, "application/openmetrics-text; version=1.0.0; charset=utf-8");
  EXPECT_NE(open.body.find("\n# TYPE orvalis_connections counter\norvalis_connections_total 3\n"), std::string::npos);
  EXPECT_TRUE(open.body.ends_with("\n# EOF\n"));
}

TEST_F(ObservationServiceTest, StreamsNewsAtOnceAndAWordWhileThereIsNone) {
  const HttpResponse stream = Ask("/observation/stream");
  EXPECT_EQ(stream.body, "data: " + Ask("/observation").body + "\n\n");
  ASSERT_NE(stream.events, nullptr);
  stream.events->Join(*this);
  // Readings every two seconds, and an account each second.
  for (int second = 0; second < 8; ++second) {
    service_.Note(now_, second % 2 == 0);
    loop_.Advance(milliseconds(1'000));
  }
  EXPECT_EQ(pushed_.size(), 4U);
  // The unit is silent: still well within the ten seconds after which a reader takes the program for lost.
  for (int second = 0; second < 9; ++second) {
    service_.Note(now_, false);
    loop_.Advance(milliseconds(1'000));
  }
  EXPECT_EQ(pushed_.size(), 7U);
  stream.events->Leave(*this);
}

TEST_F(ObservationServiceTest, TellsTheCurvesOfAStretch) {
  for (int i = 0; i < 5; ++i) {
    Sample sample;
    sample.time = kNow + (i * 2 - 60) * kSecond;
    sample.values[Quantity::kAmbient] = 10;
    sample.values[Quantity::kSky] = static_cast<float>(-4 - i);
    sample.values[Quantity::kWind] = 10;  // miles an hour
    if (i == 2) sample.values[Quantity::kAmbient] = Values()[Quantity::kAmbient];
    if (i > 1) sample.conditions.Put(Condition::kSafe);
    history_.Add(sample);
  }
  const std::string body = Ask("/history", "from=-100&points=2000").body;
  for (const char* const part :
       {R"({"from":"2026-11-21T20:02:25.250Z","to":"2026-11-21T20:04:05.250Z","station":"Dome \"A\"�","uuid":"id",)"
        R"("source":"unit","curves":{"ambient_c":[[40,10],[42,10],null,[46,10],[48,10]],)",
        R"("difference_c":[[40,14],[42,15],null,[46,17],[48,18]])", R"("dew_point_c":[],)",
        R"("wind_m_s":[[40,4.47],[42,4.47],[44,4.47],[46,4.47],[48,4.47]])",
        R"("rain":[],"unit_alarm":[],"safe":[[44,48]]}})"}) {
    EXPECT_NE(body.find(part), std::string::npos) << part << "\n" << body;
  }
}

TEST_F(ObservationServiceTest, BoundsWhatCurvesCost) {
  for (const char* const query : {"from=x", "from=", "from=1.5", "points=99999999999999999999", "from=-5&to=-10"}) {
    EXPECT_EQ(Ask("/history", query).status, kBadRequest) << query;
  }
  const CurveRequest all = ReadCurveRequest("from=0&points=1000000", kNow);
  EXPECT_EQ(all, (CurveRequest{{kNow - 48 * 3600 * kSecond, kNow}, 2'000}));
  EXPECT_EQ(ReadCurveRequest("", kNow), (CurveRequest{{kNow - 24 * 3600 * kSecond, kNow}, 800}));
  for (int i = 0; i < 4; ++i) EXPECT_EQ(Ask("/history").status, kOk);
  EXPECT_EQ(Ask("/history").status, kUnavailable);
  loop_.Advance(milliseconds(1'000));
  EXPECT_EQ(Ask("/history").status, kOk);
}

TEST_F(ObservationServiceTest, ServesEverythingThatThePageAsksFor) {
  const std::string page = Ask("/").body;
  int files = 0;
  for (const PageFile& file : PageFiles()) {
    const HttpResponse answer = Ask(file.path);
    EXPECT_EQ(answer.status, kOk) << file.path;
    EXPECT_FALSE(answer.body.empty()) << file.path;
    // What the browser is told to refuse: anything from elsewhere, and scripts or styles within the page.
    EXPECT_EQ(answer.body.find("innerHTML"), std::string::npos) << file.path;
    EXPECT_EQ(answer.body.find("https:"), std::string::npos) << file.path;
    if (page.find("\"" + std::string(file.path) + "\"") != std::string::npos) ++files;
  }
  EXPECT_EQ(files, 3) << "a style, and two scripts of which one loads the others";
  EXPECT_EQ(page.find("style="), std::string::npos);
  EXPECT_EQ(page.find("<style"), std::string::npos);
  EXPECT_EQ(page.find("<script>"), std::string::npos);
}

}  // namespace
}  // namespace orvalis::network
