#include "network/observation/metrics.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

#include "base/text.h"

namespace orvalis::network {
namespace {

constexpr double kPercent = 0.01;

struct ValueMetric {
  std::string_view name;
  std::string_view help;
  ObservedValues::Value ObservedValues::*member;
  double factor = 1;
};
constexpr std::array<ValueMetric, 12> kValues{{
    {"ambient_celsius", "Temperature of the air", &ObservedValues::ambient_c},
    {"sky_celsius", "Measured temperature of the sky", &ObservedValues::sky_c},
    {"clear_sky_celsius", "Calculated temperature of a clear sky", &ObservedValues::clear_sky_c},
    {"sky_difference_celsius", "How much colder the sky is than the air", &ObservedValues::difference_c},
    {"dew_point_celsius", "Dew point", &ObservedValues::dew_point_c},
    {"relative_humidity_ratio", "Relative humidity, 1 is saturated", &ObservedValues::humidity_percent, kPercent},
    {"wind_meters_per_second", "Wind", &ObservedValues::wind_m_s},
    {"wind_average_meters_per_second", "Average wind", &ObservedValues::wind_average_m_s},
    {"wind_gust_meters_per_second", "Strongest gust", &ObservedValues::wind_gust_m_s},
    {"rain_counts", "Rain as the unit counts it", &ObservedValues::rain_counts},
    {"light_counts", "Light as the unit counts it, high is dark", &ObservedValues::light_counts},
    {"cloud_cover_ratio", "0, 0.5 or 1, by the word for the sky", &ObservedValues::cloud_cover_percent, kPercent},
}};

std::string Number(double value) {
  constexpr int kDecimals = 4;
  return RealToText(RoundToDecimals(value, kDecimals));
}

std::string Number(std::uint64_t value) { return std::to_string(value); }

std::string Seconds(std::chrono::milliseconds time) { return Number(std::chrono::duration<double>(time).count()); }

std::string Flag(bool value) { return value ? "1" : "0"; }

std::string Label(std::string_view name, std::string_view value) {
  std::string label(name);
  label += "=\"";
  for (const char c : value) {
    if (c == '\n') {
      label += "\\n";
      continue;
    }
    if (c == '\\' || c == '"') label += '\\';
    label += c;
  }
  return label + '"';
}

/// Writes one metric after another.
class MetricWriter {
 public:
  explicit MetricWriter(MetricFormat format) : open_(format == MetricFormat::kOpenMetrics) {}

  void Gauge(std::string_view name, std::string_view help, const std::string& value) {
    Head(name, "gauge", help);
    Sample(name, value);
  }
  /// In OpenMetrics a counter is named without the "_total" of its sample.
  void Counter(std::string_view name, std::string_view help, std::uint64_t value) {
    const std::string sample = std::string(name) + "_total";
    Head(open_ ? name : sample, "counter", help);
    Sample(sample, Number(value));
  }
  /// Likewise what is known about the program and its "_info".
  void Info(std::string_view help, const std::string& labels) {
    if (open_) {
      text_.append("# HELP orvalis ").append(help).append("\n# TYPE orvalis info\n");
    } else {
      Head("info", "gauge", help);
    }
    Sample("info", "1", labels);
  }
  void Head(std::string_view name, std::string_view type, std::string_view help) {
    text_.append("# HELP orvalis_").append(name).append(" ").append(help).append("\n");
    text_.append("# TYPE orvalis_").append(name).append(" ").append(type).append("\n");
  }
  void Sample(std::string_view name, std::string_view value, std::string_view labels = {}) {
    text_.append("orvalis_").append(name);
    if (!labels.empty()) text_.append("{").append(labels).append("}");
    text_.append(" ").append(value).append("\n");
  }

  [[nodiscard]] std::string Finish() {
    if (open_) text_ += "# EOF\n";
    return std::move(text_);
  }

 private:
  bool open_;
  std::string text_;
};

void WriteVerdict(const Observation& now, MetricWriter& writer) {
  writer.Gauge("safe", "1 while it is safe to have the roof open", Flag(now.verdict.safe));
  writer.Head("unsafe_reason", "gauge", "1 for each reason why it is not safe");
  for (std::size_t i = 0; i < kReasonCount; ++i) {
    const auto reason = static_cast<Reason>(i);
    writer.Sample("unsafe_reason", Flag(now.verdict.reasons.Has(reason)), Label("reason", Name(reason)));
  }
  writer.Gauge("hold_seconds", "The rest of the wait before it is safe again", Seconds(now.verdict.hold_left));
  writer.Gauge("connected", "1 while the unit is connected", Flag(now.connected));
  if (now.age) writer.Gauge("observation_age_seconds", "Time since the last undamaged frame", Seconds(*now.age));
}

}  // namespace

MetricFormat MetricFormatFor(std::string_view accept) {
  const bool open = accept.find("application/openmetrics-text") != std::string_view::npos;
  return open ? MetricFormat::kOpenMetrics : MetricFormat::kText;
}

std::string_view ContentType(MetricFormat format) {
  return format == MetricFormat::kOpenMetrics ? "application/openmetrics-text; version=1.0.0; charset=utf-8"
                                              : "text/plain; version=0.0.4; charset=utf-8";
}

std::string MetricsText(const Observation& now, const Station& station, const MetricCounters& counters,
                        MetricFormat format) {
  MetricWriter writer(format);
  writer.Info("The program and its station", Label("version", ORVALIS_VERSION) + "," + Label("station", station.name) +
                                                 "," + Label("uuid", station.uuid));
  WriteVerdict(now, writer);
  for (const ValueMetric& metric : kValues) {
    const std::optional<double> value = now.values.*metric.member;
    if (value) writer.Gauge(metric.name, metric.help, Number(*value * metric.factor));
  }
  writer.Counter("frames", "Complete frames", now.frames);
  writer.Counter("damaged_frames", "Complete frames that were damaged", now.damaged_frames);
  writer.Counter("connections", "Openings of the serial port", counters.connections);
  writer.Counter("uploads", "Uploads of readings and pictures that succeeded", counters.uploads);
  writer.Counter("failed_uploads", "Uploads of readings and pictures that failed", counters.failed_uploads);
  return writer.Finish();
}

}  // namespace orvalis::network
