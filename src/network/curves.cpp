#include "network/curves.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <nlohmann/json.hpp>
#include <optional>
#include <stdexcept>
#include <vector>

#include "base/clock.h"
#include "base/text.h"
#include "history/condition_bands.h"
#include "history/curve.h"
#include "network/http/form_fields.h"

namespace orvalis::network {
namespace {

constexpr std::int64_t kMsPerSecond = 1'000;
/// A curve has the first, lowest, highest and last value of each column.
constexpr int kPointsOfColumn = 4;
/// Computing the curves of two days takes some ten milliseconds, which everything else waits for.
constexpr int kTurnsPerSecond = 4;
constexpr double kMetresPerSecond = 0.44704;  ///< of a mile an hour

/// How much colder the sky is than the air. Within a span the two are not known at the same moment: their middles are.
std::optional<ValueLimits> Difference(const Span& span) {
  if (!span.lowest.Knows(Quantity::kAmbient) || !span.lowest.Knows(Quantity::kSky)) return std::nullopt;
  const auto middle = [&](Quantity quantity) { return (span.lowest[quantity] + span.highest[quantity]) / 2; };
  const double difference = middle(Quantity::kAmbient) - middle(Quantity::kSky);
  return ValueLimits{.lowest = difference, .highest = difference};
}

std::string IsoTime(std::int64_t utc) { return FormatTime(TimeAt(utc), "YYYY-MM-DDThh:nn:ss.zzzZ"); }

struct Curve {
  const char* name;
  CurveValue value;
  double factor = 1;
};

const std::array<Curve, 10>& AllCurves() {
  static const std::array<Curve, 10> curves{{
      {"ambient_c", ValueOf(Quantity::kAmbient)},
      {"sky_c", ValueOf(Quantity::kSky)},
      {"clear_sky_c", ValueOf(Quantity::kClearSky)},
      {"difference_c", Difference},
      {"dew_point_c", ValueOf(Quantity::kDewPoint)},
      {"humidity_percent", ValueOf(Quantity::kHumidity)},
      {"wind_m_s", ValueOf(Quantity::kWind), kMetresPerSecond},
      {"wind_gust_m_s", ValueOf(Quantity::kGust), kMetresPerSecond},
      {"rain_counts", ValueOf(Quantity::kRain)},
      {"light_counts", ValueOf(Quantity::kLight)},
  }};
  return curves;
}

struct Band {
  const char* name;
  Condition condition;
};
constexpr std::array<Band, 5> kBands{{
    {"clear", Condition::kClear},
    {"partly_cloudy", Condition::kPartlyCloudy},
    {"cloudy", Condition::kCloudy},
    {"rain", Condition::kRain},
    {"unit_alarm", Condition::kUnsafe},
}};

/// Appends [[…,…],[…,…]], without the cost of an object for each of some thousand points.
class PairList {
 public:
  explicit PairList(std::string& text) : text_(text) { text_ += '['; }
  PairList(const PairList&) = delete;
  PairList& operator=(const PairList&) = delete;
  ~PairList() { text_ += ']'; }

  void Pair(std::int64_t first, const std::string& second) {
    Separate();
    text_.append("[").append(std::to_string(first)).append(",").append(second).append("]");
  }
  void Gap() {
    Separate();
    text_ += "null";
  }

 private:
  void Separate() {
    if (!text_.ends_with('[')) text_ += ',';
  }
  std::string& text_;
};

void WriteName(std::string& text, std::string_view name) {
  if (!text.ends_with('{')) text += ',';
  text.append("\"").append(name).append("\":");
}

void WriteCurve(std::string& text, const Curve& curve, const std::vector<CurvePoint>& points, std::int64_t from) {
  constexpr int kDecimals = 2;
  PairList list(text);
  for (const CurvePoint& point : points) {
    if (std::isnan(point.value)) {
      list.Gap();
    } else {
      list.Pair(std::llround((point.time - static_cast<double>(from)) / kMsPerSecond),
                RealToText(RoundToDecimals(point.value * curve.factor, kDecimals)));
    }
  }
}

void WriteBands(std::string& text, const std::vector<TimeRange>& bands, std::int64_t from) {
  PairList list(text);
  for (const TimeRange& band : bands) {
    list.Pair((band.from - from) / kMsPerSecond, std::to_string((band.to - from + kMsPerSecond - 1) / kMsPerSecond));
  }
}

std::optional<std::int64_t> ReadNumber(const FormFields& fields, std::string_view name) {
  constexpr std::int64_t kLargest = 100'000'000'000;
  const auto text = fields.Find(name, FormFields::Case::kExact);
  if (!text) return std::nullopt;
  std::int64_t value = 0;
  const auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), value);
  if (error != std::errc() || end != text->data() + text->size() || value < -kLargest || value > kLargest) {
    throw std::invalid_argument("\"" + std::string(name) + "\" must be a whole number");
  }
  return value;
}

}  // namespace

CurveRequest ReadCurveRequest(std::string_view query, std::int64_t now) {
  constexpr int kUsualPoints = 800;
  const FormFields fields(query);
  const auto time = [&](std::string_view name, std::int64_t otherwise) {
    const auto seconds = ReadNumber(fields, name);
    if (!seconds) return otherwise;
    return *seconds * kMsPerSecond + (*seconds < 0 ? now : 0);
  };
  CurveRequest request;
  request.range.to = time("to", now);
  request.range.from = time("from", request.range.to - History::kUnthinnedMs);
  if (request.range.from >= request.range.to) throw std::invalid_argument("\"from\" must be before \"to\"");
  request.range.from = std::max(request.range.from, request.range.to - History::kKeptMs);
  request.points = static_cast<int>(std::clamp<std::int64_t>(ReadNumber(fields, "points").value_or(kUsualPoints),
                                                             CurveRequest::kFewestPoints, CurveRequest::kMostPoints));
  return request;
}

std::string HistoryJson(const HistoryView& recorded, const CurveRequest& request, const Station& station) {
  const History& history = recorded.history;
  const TimeRange& range = request.range;
  const int columns = request.points / kPointsOfColumn;
  std::string text = nlohmann::ordered_json{{"from", IsoTime(range.from)},
                                            {"to", IsoTime(range.to)},
                                            {"station", station.name},
                                            {"uuid", station.uuid},
                                            {"source", recorded.demo ? "demo" : "unit"}}
                         .dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
  text.pop_back();
  WriteName(text, "curves");
  text += '{';
  for (const Curve& curve : AllCurves()) {
    WriteName(text, curve.name);
    WriteCurve(text, curve, CurvePoints(history, curve.value, range, columns), range.from);
  }
  text += '}';
  WriteName(text, "bands");
  text += '{';
  for (const Band& band : kBands) {
    WriteName(text, band.name);
    WriteBands(text, ConditionBands(history, band.condition, range, columns), range.from);
  }
  const VerdictBands verdicts = BandsOf(recorded, range, columns);
  WriteName(text, "safe");
  WriteBands(text, verdicts.safe, range.from);
  WriteName(text, "unsafe");
  WriteBands(text, verdicts.unsafe, range.from);
  text += "}}";
  return text;
}

void Curves::AddTo(Resources& resources) {
  resources.Add({.path = "/history",
                 .get = [this](const HttpRequest& request) { return Answer(request); },
                 .help = "curves: ?from=SECONDS&to=SECONDS&points=NUMBER, negative seconds are before now"});
}

HttpResponse Curves::Answer(const HttpRequest& request) {
  CurveRequest curves;
  try {
    curves = ReadCurveRequest(request.query, parts_.observe().time);
  } catch (const std::invalid_argument& error) {
    return TextAnswer(kBadRequest, error.what());
  }
  if (!TakeTurn()) {
    HttpResponse later = TextAnswer(kUnavailable, "Too many ask for curves at once. Ask again in a second");
    later.headers.emplace_back("Retry-After", "1");
    return later;
  }
  return {.content_type = kJsonType, .body = HistoryJson(parts_.recorded(), curves, parts_.station)};
}

bool Curves::TakeTurn() {
  if (const std::int64_t second = parts_.tick() / kMsPerSecond; second != turns_second_) {
    turns_second_ = second;
    turns_ = 0;
  }
  return ++turns_ <= kTurnsPerSecond;
}

}  // namespace orvalis::network
