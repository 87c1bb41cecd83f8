#include "network/readings.h"

#include <array>
#include <cmath>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

#include "base/clock.h"
#include "base/text.h"
#include "verdict/explanation.h"

namespace orvalis::network {
namespace {

using Json = nlohmann::ordered_json;

/// A reader that hears nothing for ten seconds takes the program for lost; it looks after a few.
constexpr std::int64_t kMostSilence = 2'500;  // ms
constexpr int kDecimals = 3;

std::string IsoTime(std::int64_t utc) { return FormatTime(TimeAt(utc), "YYYY-MM-DDThh:nn:ss.zzzZ"); }

Json NumberOrNull(const ObservedValues::Value& value) {
  return value ? Json(RoundToDecimals(*value, kDecimals)) : Json();
}

Json WordOrNull(std::string_view word) { return word.empty() ? Json() : Json(word); }

double Seconds(std::chrono::milliseconds time) { return static_cast<double>(time.count()) / 1'000.0; }

std::string Line(const Json& json) { return json.dump(-1, ' ', false, Json::error_handler_t::replace); }

/// A value of the table as a metric.
struct ValueMetric {
  std::string_view value;  ///< its name in `ObservedValueTable`
  std::string_view name;
  std::string_view unit;  ///< what the name ends in
  std::string_view help;
  double factor = 1;  ///< from the value's unit to the metric's
};
constexpr std::array<ValueMetric, 13> kValueMetrics{{
    {"ambient_c", "orvalis_ambient_celsius", "celsius", "Ambient temperature."},
    {"body_c", "orvalis_sky_sensor_celsius", "celsius", "Temperature of the sky sensor itself."},
    {"sky_c", "orvalis_sky_celsius", "celsius", "Sky temperature, measured."},
    {"clear_sky_c", "orvalis_clear_sky_celsius", "celsius", "Sky temperature calculated for a clear sky."},
    {"difference_c", "orvalis_sky_difference_celsius", "celsius", "Ambient minus sky temperature."},
    {"dew_point_c", "orvalis_dew_point_celsius", "celsius", "Dew point."},
    {"humidity_percent", "orvalis_humidity_ratio", "ratio", "Relative humidity as computed; 1 is 100 %.", 0.01},
    {"wind_m_s", "orvalis_wind_meters_per_second", "meters_per_second", "Wind speed."},
    {"wind_average_m_s", "orvalis_wind_average_meters_per_second", "meters_per_second", "Wind speed, averaged."},
    {"wind_gust_m_s", "orvalis_wind_gust_meters_per_second", "meters_per_second",
     "Highest wind speed of the last minutes."},
    {"rain_counts", "orvalis_rain_counts", "counts", "Rain sensor, as the unit counts; more is wetter."},
    {"light_counts", "orvalis_light_counts", "counts", "Light sensor, as the unit counts; more is darker."},
    {"cloud_cover_percent", "orvalis_cloud_cover_ratio", "ratio", "Cloud cover by the cloud word: 0, 0.5 or 1.", 0.01},
}};

std::string LabelValue(std::string_view text) {
  std::string value;
  for (const char c : text) {
    if (c == '\\' || c == '"') value += '\\';
    value += static_cast<unsigned char>(c) < 0x20 ? ' ' : c;
  }
  return value;
}

/// Writes one metric after another.
class MetricsText {
 public:
  explicit MetricsText(MetricsFormat format) : open_(format == MetricsFormat::kOpenMetrics) {}

  void Gauge(std::string_view name, std::string_view help, double value, std::string_view unit = "") {
    Head(name, "gauge", help, unit);
    Sample(name, "", value);
  }
  void Head(std::string_view name, std::string_view type, std::string_view help, std::string_view unit = "") {
    text_.append("# TYPE ").append(name).append(" ").append(type).append("\n");
    if (open_ && !unit.empty()) text_.append("# UNIT ").append(name).append(" ").append(unit).append("\n");
    text_.append("# HELP ").append(name).append(" ").append(help).append("\n");
  }
  /// In OpenMetrics a counter is called without the "_total" of its sample.
  void Counter(std::string_view name, std::string_view help, std::uint64_t value) {
    const std::string sample = std::string(name) + "_total";
    Head(open_ ? name : sample, "counter", help);
    text_.append(sample).append(" ").append(std::to_string(value)).append("\n");
  }
  void Sample(std::string_view name, const std::string& labels, double value) {
    text_.append(name).append(labels).append(" ").append(GeneralText(value)).append("\n");
  }
  [[nodiscard]] bool open() const { return open_; }
  [[nodiscard]] std::string Finish() && {
    if (open_) text_ += "# EOF\n";
    return std::move(text_);
  }

 private:
  bool open_;
  std::string text_;
};

void AddStation(const Station& station, MetricsText& text) {
  // OpenMetrics has a type for it, which adds to the name.
  if (text.open()) {
    text.Head("orvalis", "info", "The program and its station.");
  } else {
    text.Head("orvalis_info", "gauge", "The program and its station.");
  }
  text.Sample(
      "orvalis_info",
      "{station=\"" + LabelValue(station.name) + "\",uuid=\"" + station.uuid + "\",version=\"" ORVALIS_VERSION "\"}",
      1);
}

void AddVerdict(const Observation& now, MetricsText& text) {
  const SafetyVerdict& verdict = now.verdict;
  text.Gauge("orvalis_safe", "Whether it is safe: 1, or 0.", verdict.safe ? 1 : 0);
  text.Head("orvalis_unsafe_reason", "gauge", "Whether the reason makes it unsafe: 1, or 0.");
  for (std::size_t i = 0; i < kReasonCount; ++i) {
    const auto reason = static_cast<Reason>(i);
    text.Sample("orvalis_unsafe_reason", "{reason=\"" + std::string(Name(reason)) + "\"}",
                verdict.reasons.Has(reason) ? 1 : 0);
  }
  text.Gauge("orvalis_verdict_age_seconds", "How long it has been safe or unsafe.", Seconds(verdict.lasted), "seconds");
  text.Gauge("orvalis_connected", "Whether the sensor unit is connected: 1, or 0.", now.connected ? 1 : 0);
  if (now.age) {
    text.Gauge("orvalis_observation_age_seconds", "Time since the last good reading.", Seconds(*now.age), "seconds");
  }
}

void AddCounters(const Observation& now, const MetricCounters& counters, MetricsText& text) {
  text.Counter("orvalis_frames", "Complete frames.", now.frames);
  text.Counter("orvalis_damaged_frames", "Complete frames that were damaged.", now.damaged_frames);
  text.Counter("orvalis_connections", "Openings of the serial port.", counters.connections);
  text.Counter("orvalis_uploads", "Uploads of readings and pictures that succeeded.", counters.uploads);
  text.Counter("orvalis_failed_uploads", "Uploads of readings and pictures that failed.", counters.failed_uploads);
}

}  // namespace

std::string ObservationJson(const Observation& now, const Station& station) {
  const SafetyVerdict& verdict = now.verdict;
  Json reasons = Json::array();
  verdict.reasons.ForEach([&](orvalis::Reason reason) {
    reasons.push_back({{"name", Name(reason)}, {"text", Explain(reason, now).English()}});
  });
  Json values;
  for (const ObservedValue& value : ObservedValueTable()) values[value.name] = NumberOrNull(now.values.*value.member);
  return Line({{"time", IsoTime(now.time)},
               {"station", station.name},
               {"uuid", station.uuid},
               {"source", Name(now.source)},
               {"connected", now.connected},
               {"age_s", now.age ? Json(Seconds(*now.age)) : Json()},
               {"safe", verdict.safe},
               {"since", IsoTime(verdict.since)},
               {"hold_s", Seconds(verdict.hold_left)},
               {"reasons", std::move(reasons)},
               {"values", std::move(values)},
               {"words",
                {{"sky", WordOrNull(now.words.sky)},
                 {"wind", WordOrNull(now.words.wind)},
                 {"rain", WordOrNull(now.words.rain)},
                 {"light", WordOrNull(now.words.light)}}},
               {"heater", WordOrNull(now.words.heater)},
               {"relay", WordOrNull(now.words.relay)}});
}

std::string RoofStatusJson(const Observation& now) {
  return Line({{"roof_status", {{"open_ok", now.verdict.safe ? 1 : 0}, {"reasons", Explain(now)}}}});
}

std::string Metrics(const Observation& now, const Station& station, const MetricCounters& counters,
                    MetricsFormat format) {
  MetricsText text(format);
  AddStation(station, text);
  AddVerdict(now, text);
  for (const ObservedValue& row : ObservedValueTable()) {
    const ObservedValues::Value value = now.values.*row.member;
    for (const ValueMetric& metric : kValueMetrics) {
      if (metric.value != row.name || !value) continue;
      text.Gauge(metric.name, metric.help, *value * metric.factor, metric.unit);
    }
  }
  AddCounters(now, counters, text);
  return std::move(text).Finish();
}

void Readings::AddTo(Resources& resources) {
  resources.Add({.path = "/observation",
                 .get = [this](const HttpRequest&) -> HttpResponse {
                   return {.content_type = kJsonType, .body = ObservationJson(parts_.observe(), parts_.station)};
                 },
                 .help = "the readings and the verdict of now, as JSON",
                 .shared = true});
  resources.Add({.path = "/observation/stream",
                 .get = [this](const HttpRequest&) -> HttpResponse {
                   if (!stream_.HasReaders()) last_sent_ = parts_.tick();
                   return {.content_type = kEventStreamType,
                           .body = EventChannel::Format(ObservationJson(parts_.observe(), parts_.station)),
                           .events = &stream_};
                 },
                 .help = "the same as server-sent events, at each reading and each change"});
  resources.Add({.path = "/roof-status",
                 .get = [this](const HttpRequest&) -> HttpResponse {
                   return {.content_type = kJsonType, .body = RoofStatusJson(parts_.observe())};
                 },
                 .help = "whether the roof may open, and why not, as JSON for weather proxies"});
  resources.Add({.path = "/metrics",
                 .get = [this](const HttpRequest& request) -> HttpResponse {
                   const bool open =
                       request.Header("Accept").find("application/openmetrics-text") != std::string_view::npos;
                   return {.content_type = open ? "application/openmetrics-text; version=1.0.0; charset=utf-8"
                                                : "text/plain; version=0.0.4; charset=utf-8",
                           .body = Metrics(parts_.observe(), parts_.station, parts_.counters(),
                                           open ? MetricsFormat::kOpenMetrics : MetricsFormat::kPlain)};
                 },
                 .help = "the readings and the verdict of now, for Prometheus",
                 .shared = true});
}

void Readings::Note(const Observation& now, const Observer::News& news) {
  if (!stream_.HasReaders()) return;
  const std::int64_t tick = parts_.tick();
  if (!news.reading && !news.reasons && tick - last_sent_ < kMostSilence) return;
  last_sent_ = tick;
  stream_.Publish(ObservationJson(now, parts_.station));
}

}  // namespace orvalis::network
