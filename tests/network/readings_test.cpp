#include "network/readings.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "network/curves.h"
#include "network/page/page_files.h"

namespace orvalis::network {
namespace {

constexpr std::int64_t kNow = 1'795'291'445'250;  // 2026-11-21T20:04:05.250Z
constexpr std::int64_t kSecond = 1'000;
constexpr std::int64_t kHour = 3'600 * kSecond;

/// What is asked of the resources, with an observation and a history of the test's own.
class ReadingsTest : public testing::Test, protected EventChannel::Reader {
 protected:
  ReadingsTest() {
    station_.name = "Dome \"A\"\xff";
    station_.uuid = "id";
    now_.time = kNow;
    now_.verdict.reasons.Add(Reason::kNoConnection);
    readings_.AddTo(resources_);
    curves_.AddTo(resources_);
    AddPage(resources_);
  }

  HttpResponse Ask(std::string_view path, std::string_view query = "") {
    HttpRequest request;
    request.method = Method::kGet;
    request.path = path;
    request.query = query;
    return resources_.Answer(request);
  }
  void Push(std::string_view bytes) override { pushed_.emplace_back(bytes); }

  std::int64_t tick_ = 0;
  Observation now_;
  Station station_;
  History history_;
  VerdictHistory verdicts_;
  Resources resources_;
  std::vector<std::string> pushed_;
  Readings readings_{{.observe = [this]() -> const Observation& { return now_; },
                      .tick = [this] { return tick_; },
                      .station = station_,
                      .counters = [] { return MetricCounters{.connections = 3, .uploads = 2}; }}};
  Curves curves_{{.observe = [this]() -> const Observation& { return now_; },
                  .tick = [this] { return tick_; },
                  .recorded = [this]() -> HistoryView {
                    return {history_, verdicts_};
                  },
                  .station = station_}};
};

TEST_F(ReadingsTest, TellsNullForWhateverIsUnknown) {
  EXPECT_EQ(Ask("/observation").body,
            R"({"time":"2026-11-21T20:04:05.250Z","station":"Dome \"A\"�","uuid":"id","source":"none",)"
            R"("connected":false,"age_s":null,"safe":false,"since":"1970-01-01T00:00:00.000Z","hold_s":0.0,)"
            R"("reasons":[{"name":"no_connection","text":"not connected to the unit"}],)"
            R"("values":{"ambient_c":null,"body_c":null,"sky_c":null,"clear_sky_c":null,"difference_c":null,)"
            R"("dew_point_c":null,"humidity_percent":null,"wind_m_s":null,"wind_average_m_s":null,)"
            R"("wind_gust_m_s":null,"rain_counts":null,"light_counts":null,"cloud_cover_percent":null},)"
            R"("words":{"sky":null,"wind":null,"rain":null,"light":null},"heater":null,"relay":null})");
}

TEST_F(ReadingsTest, NamesCountersAsEachFormatHasThem) {
  const std::string plain = Ask("/metrics").body;
  EXPECT_NE(plain.find("\n# TYPE orvalis_connections_total counter\n"), std::string::npos) << plain;
  EXPECT_NE(plain.find("\norvalis_connections_total 3\n"), std::string::npos);
  EXPECT_TRUE(plain.ends_with("\norvalis_failed_uploads_total 0\n"));
  const std::string open = Metrics(now_, station_, {.connections = 3}, MetricsFormat::kOpenMetrics);
  EXPECT_NE(open.find("\n# TYPE orvalis_connections counter\n"), std::string::npos) << open;
  EXPECT_NE(open.find("\norvalis_connections_total 3\n"), std::string::npos);
  EXPECT_TRUE(open.ends_with("\norvalis_failed_uploads_total 0\n# EOF\n"));
}

TEST_F(ReadingsTest, StreamsNewsAtOnceAndAWordWhileThereIsNone) {
  const HttpResponse stream = Ask("/observation/stream");
  EXPECT_EQ(stream.body, "data: " + Ask("/observation").body + "\n\n");
  ASSERT_NE(stream.events, nullptr);
  stream.events->Join(*this);
  // Readings every two seconds, and an account each second.
  for (int second = 0; second < 8; ++second) {
    readings_.Note(now_, {.reading = second % 2 == 0});
    tick_ += kSecond;
  }
  EXPECT_EQ(pushed_.size(), 4U);
  // The unit is silent: a word every three seconds, whoever joins meanwhile.
  for (int second = 0; second < 9; ++second) {
    EXPECT_EQ(Ask("/observation/stream").status, kOk);
    readings_.Note(now_, {});
    tick_ += kSecond;
  }
  EXPECT_EQ(pushed_.size(), 7U);
  stream.events->Leave(*this);
}

TEST_F(ReadingsTest, TellsTheCurvesOfAStretch) {
  for (int i = 0; i < 5; ++i) {
    Sample sample;
    sample.time = kNow + (i * 2 - 60) * kSecond;
    if (i != 2) sample.values[Quantity::kAmbient] = 10;
    sample.values[Quantity::kSky] = static_cast<float>(-4 - i);
    sample.values[Quantity::kWind] = 10;  // miles an hour
    if (i < 2) sample.values[Quantity::kRain] = static_cast<float>(120 + i);
    history_.Add(sample);
  }
  verdicts_.Put({.first = kNow - 60 * kSecond, .last = kNow - 56 * kSecond, .reasons = "hold", .explanation = ""});
  verdicts_.Put({.first = kNow - 56 * kSecond, .last = kNow, .safe = true, .reasons = "", .explanation = ""});
  const std::string body = Ask("/history", "from=-100&points=2000").body;
  for (const char* const part :
       {R"({"from":"2026-11-21T20:02:25.250Z","to":"2026-11-21T20:04:05.250Z","station":"Dome \"A\"�","uuid":"id",)",
        R"("source":"unit","curves":{"ambient_c":[[40,10],[42,10],null,[46,10],[48,10]],)",
        R"("difference_c":[[40,14],[42,15],null,[46,17],[48,18]])", R"("dew_point_c":[],)",
        R"("wind_m_s":[[40,4.47],[42,4.47],[44,4.47],[46,4.47],[48,4.47]])",
        R"("rain_counts":[[40,120],[42,121]],"light_counts":[]})",
        R"("rain":[],"unit_alarm":[],"safe":[[44,100]],"unsafe":[[40,44]]}})"}) {
    EXPECT_NE(body.find(part), std::string::npos) << part << "\n" << body;
  }
}

TEST_F(ReadingsTest, BoundsWhatCurvesCost) {
  for (const char* const query : {"from=x", "from=", "from=1.5", "points=99999999999999999999", "from=-5&to=-10"}) {
    EXPECT_EQ(Ask("/history", query).status, kBadRequest) << query;
  }
  const CurveRequest all = ReadCurveRequest("from=0&points=1000000", kNow);
  EXPECT_EQ(all, (CurveRequest{{kNow - 48 * kHour, kNow}, 2'000}));
  EXPECT_EQ(ReadCurveRequest("", kNow), (CurveRequest{{kNow - 24 * kHour, kNow}, 800}));
  for (int i = 0; i < 4; ++i) EXPECT_EQ(Ask("/history").status, kOk);
  EXPECT_EQ(Ask("/history").status, kUnavailable);
  tick_ += kSecond;
  EXPECT_EQ(Ask("/history").status, kOk);
}

TEST_F(ReadingsTest, ServesAPageThatItsOwnRulesAllow) {
  const std::string page = Ask("/").body;
  int named = 0;
  for (const PageFile& file : PageFiles()) {
    const HttpResponse answer = Ask(file.path);
    EXPECT_EQ(answer.status, kOk) << file.path;
    EXPECT_FALSE(answer.body.empty()) << file.path;
    // Nothing from elsewhere, and nothing that came over the network is taken for markup.
    EXPECT_EQ(answer.body.find("innerHTML"), std::string::npos) << file.path;
    EXPECT_EQ(answer.body.find("https:"), std::string::npos) << file.path;
    if (page.find("\"" + std::string(file.path) + "\"") != std::string::npos) ++named;
  }
  EXPECT_EQ(named, 3) << "the style and two scripts, of which one loads the others";
  for (const char* const forbidden : {"style=", "<style", "<script>", "onclick"}) {
    EXPECT_EQ(page.find(forbidden), std::string::npos) << forbidden;
  }
}

}  // namespace
}  // namespace orvalis::network
